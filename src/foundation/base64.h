#pragma once

#include <QByteArray>
#include <QString>

namespace quenvolta
{

/// What DecodeBase64 accepts; the numbers are the platform's.
enum class Base64Form {
    Header = 0,        ///< between lines "-----BEGIN ...-----" and "-----END ...-----"
    Plain = 1,         ///< Base64 alone
    RequestHeader = 3, ///< as Header, for certificate requests
    Any = 6,           ///< with or without such lines
};

/// The bytes of a Base64 text (blanks and line breaks are skipped); Win32Exception when it is none.
QByteArray DecodeBase64(const QString& text, Base64Form form);

} // namespace quenvolta
