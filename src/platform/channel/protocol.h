#pragma once

#include <QByteArrayView>

#include <cstdint>

/// The numbers of the channel's protocol. docs/protocol.md describes them; a test compares the two.
namespace quenvolta
{

inline constexpr int kProtocolVersion = 1;

/// What each side writes before its first frame.
inline constexpr QByteArrayView kMagicLine("QUENVOLTA-CHANNEL\n");

/// The first item of every message.
enum class MessageKind : std::uint8_t { Hello = 0, Call = 1, Rows = 2, Result = 3, Stop = 4 };

/// What a call asks for.
enum class Operation : std::uint8_t { OpenNamespace = 0, GetObject = 1, CreateInstanceEnum = 2, ExecMethod = 3 };

/// The parts of a Rows message.
inline constexpr qsizetype kRowsMessageLength = 6;

/// A length among those of a column's texts: big-endian.
inline constexpr qsizetype kTextLengthSize = 4;

/// The first item of every object.
enum class ObjectKind : std::uint8_t { Instance = 0, Class = 1 };

/// The length that precedes each frame: big-endian, not counting itself.
inline constexpr qsizetype kFrameHeaderSize = 4;
inline constexpr qsizetype kMaxFrameSize = 16 * 1024 * 1024;
/// Arrays and maps inside each other.
inline constexpr int kMaxNesting = 64;
/// Every array, map, key and value of a frame counts as one.
inline constexpr qsizetype kMaxItems = 500'000;
/// Entries of the map of a hello and of a call's context.
inline constexpr qsizetype kMaxNamedValues = 64;
/// Rows that one call's answer may have in all its messages.
inline constexpr qsizetype kMaxRowsPerCall = 5'000'000;
/// Bytes before the magic line.
inline constexpr qsizetype kMaxNoise = 64 * 1024;
/// A sender of rows begins a new message when either is reached.
inline constexpr qsizetype kRowsPerBatch = 512;
inline constexpr qsizetype kBytesPerBatch = 256 * 1024;

} // namespace quenvolta
