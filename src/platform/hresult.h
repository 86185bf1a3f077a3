#pragma once

#include <cstdint>

namespace quenvolta
{

/// The result of a platform call: negative is a failure, zero and above a success.
using HRESULT = std::int32_t;

/// True for a code that reports success.
constexpr bool Succeeded(HRESULT code)
{
    return code >= 0;
}

/// True for a code that reports a failure.
constexpr bool Failed(HRESULT code)
{
    return code < 0;
}

/// The code whose 32 bits are `bits`, so that codes can be written as people know them.
constexpr HRESULT MakeHResult(std::uint32_t bits)
{
    return static_cast<HRESULT>(bits);
}

/// The code of a Win32 error: the error itself when it is 0 or negative, else 0x80070000 with its low 16 bits.
constexpr HRESULT HResultFromWin32(std::int32_t error)
{
    return error <= 0 ? error : MakeHResult(0x80070000U | (static_cast<std::uint32_t>(error) & 0xFFFFU));
}

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT WBEM_S_TIMEDOUT = 0x00040004;

inline constexpr HRESULT E_NOTIMPL = MakeHResult(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = MakeHResult(0x80004002);
inline constexpr HRESULT E_POINTER = MakeHResult(0x80004003);
inline constexpr HRESULT E_ABORT = MakeHResult(0x80004004);
inline constexpr HRESULT E_FAIL = MakeHResult(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = MakeHResult(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = MakeHResult(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = MakeHResult(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = MakeHResult(0x80070057);

inline constexpr HRESULT DISP_E_TYPEMISMATCH = MakeHResult(0x80020005);
inline constexpr HRESULT DISP_E_OVERFLOW = MakeHResult(0x8002000A);
inline constexpr HRESULT DV_E_FORMATETC = MakeHResult(0x80040064);

/// The peer is gone: the provider's process ended or its pipe was closed.
inline constexpr HRESULT RPC_E_DISCONNECTED = MakeHResult(0x80010108);
/// The peer sent something that is no message.
inline constexpr HRESULT RPC_E_INVALID_DATA = MakeHResult(0x8001000F);
/// The peer speaks another version of the channel's protocol.
inline constexpr HRESULT RPC_E_VERSION_MISMATCH = MakeHResult(0x80010110);
inline constexpr HRESULT RPC_E_ACCESS_DENIED = MakeHResult(0x8001011B);
/// The computer can't be reached, or doesn't answer in time.
inline constexpr HRESULT RPC_S_SERVER_UNAVAILABLE = MakeHResult(0x800706BA);
inline constexpr HRESULT RPC_S_SEC_PKG_ERROR = MakeHResult(0x80070721);
/// What was given as a computer's name can't be one.
inline constexpr HRESULT HR_INVALID_COMPUTER_NAME = MakeHResult(0x800704BA);
inline constexpr HRESULT HR_CANCELLED = MakeHResult(0x800704C7);

inline constexpr HRESULT WBEM_E_FAILED = MakeHResult(0x80041001);
inline constexpr HRESULT WBEM_E_NOT_FOUND = MakeHResult(0x80041002);
inline constexpr HRESULT WBEM_E_ACCESS_DENIED = MakeHResult(0x80041003);
inline constexpr HRESULT WBEM_E_TYPE_MISMATCH = MakeHResult(0x80041005);
inline constexpr HRESULT WBEM_E_INVALID_PARAMETER = MakeHResult(0x80041008);
inline constexpr HRESULT WBEM_E_NOT_SUPPORTED = MakeHResult(0x8004100C);
inline constexpr HRESULT WBEM_E_INVALID_NAMESPACE = MakeHResult(0x8004100E);
inline constexpr HRESULT WBEM_E_INVALID_CLASS = MakeHResult(0x80041010);
inline constexpr HRESULT WBEM_E_PROVIDER_LOAD_FAILURE = MakeHResult(0x80041013);
inline constexpr HRESULT WBEM_E_INVALID_OPERATION = MakeHResult(0x80041016);
inline constexpr HRESULT WBEM_E_ALREADY_EXISTS = MakeHResult(0x80041019);
inline constexpr HRESULT WBEM_E_UNEXPECTED = MakeHResult(0x8004101D);
inline constexpr HRESULT WBEM_E_VALUE_OUT_OF_RANGE = MakeHResult(0x8004102B);
inline constexpr HRESULT WBEM_E_INVALID_METHOD = MakeHResult(0x8004102E);
inline constexpr HRESULT WBEM_E_INVALID_METHOD_PARAMETERS = MakeHResult(0x8004102F);
inline constexpr HRESULT WBEM_E_INVALID_PROPERTY = MakeHResult(0x80041031);
inline constexpr HRESULT WBEM_E_CALL_CANCELLED = MakeHResult(0x80041032);
inline constexpr HRESULT WBEM_E_SHUTTING_DOWN = MakeHResult(0x80041033);
inline constexpr HRESULT WBEM_E_INVALID_OBJECT_PATH = MakeHResult(0x8004103A);
inline constexpr HRESULT WBEM_E_OUT_OF_DISK_SPACE = MakeHResult(0x8004103B);
inline constexpr HRESULT WBEM_E_BUFFER_TOO_SMALL = MakeHResult(0x8004103C);

} // namespace quenvolta
