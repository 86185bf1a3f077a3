#pragma once

#include "provider/certificates/openssl_handles.h"

#include <QByteArrayView>

namespace quenvolta
{

/// A text with a private key in it: its memory is overwritten before it is given back, and it is never copied.
class SecretText
{
public:
    SecretText();

    /// What has been written so far; valid until more is written.
    QByteArrayView View() const;
    /// Where the library writes to.
    BIO* Output() { return m_memory.get(); }
    void Append(QByteArrayView text);

private:
    BioPtr m_memory;
};

} // namespace quenvolta
