#pragma once

#include "platform/channel/message.h"
#include "platform/channel/shape_cache.h"

#include <QByteArray>
#include <QByteArrayView>

#include <variant>

namespace quenvolta
{

/// The whole frame of a message, its length included. Empty when the message can't travel: it is too long, nested too
/// deeply, or holds a value that doesn't fit its type.
QByteArray Encode(const Message& message);

/// Why bytes are no message, in words.
struct DecodeFailure {
    QString text;
};

/// The message in a frame (without its length). Objects whose shapes are in `shapes`, or were read with it before,
/// share their class definitions.
std::variant<Message, DecodeFailure> Decode(QByteArrayView frame, ShapeCache* shapes);

/// As above, with definitions shared inside the message alone.
std::variant<Message, DecodeFailure> Decode(QByteArrayView frame);

} // namespace quenvolta
