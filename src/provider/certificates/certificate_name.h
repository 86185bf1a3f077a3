#pragma once

#include "provider/certificates/openssl_handles.h"

#include <QString>

namespace quenvolta
{

/// The first attribute of this kind (NID_commonName, ...) in a subject's or issuer's name; empty when it has none.
QString NameAttribute(const X509_NAME* name, int kind);

/// The common name; the whole name in its usual writing when it has none.
QString CommonNameOrWhole(const X509_NAME* name);

} // namespace quenvolta
