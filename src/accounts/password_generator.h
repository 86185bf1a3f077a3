#pragma once

#include <QString>

namespace quenvolta
{

/// A random password of 20 characters with letters of both cases, digits and signs, without characters that look alike.
QString GeneratePassword();

} // namespace quenvolta
