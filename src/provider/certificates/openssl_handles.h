#pragma once

#include <memory>
#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

namespace quenvolta
{

/// Frees one of the library's objects with the library's own function.
template <auto Free>
struct OpenSslFree {
    template <typename T>
    void operator()(T* object) const
    {
        Free(object);
    }
};

using BioPtr = std::unique_ptr<BIO, OpenSslFree<BIO_free_all>>;
using PrivateKeyPtr = std::unique_ptr<EVP_PKEY, OpenSslFree<EVP_PKEY_free>>;
using DigestContextPtr = std::unique_ptr<EVP_MD_CTX, OpenSslFree<EVP_MD_CTX_free>>;
using CertificatePtr = std::unique_ptr<X509, OpenSslFree<X509_free>>;
using CertificateRequestPtr = std::unique_ptr<X509_REQ, OpenSslFree<X509_REQ_free>>;
using NamePtr = std::unique_ptr<X509_NAME, OpenSslFree<X509_NAME_free>>;
using GeneralNamePtr = std::unique_ptr<GENERAL_NAME, OpenSslFree<GENERAL_NAME_free>>;
using GeneralNamesPtr = std::unique_ptr<GENERAL_NAMES, OpenSslFree<GENERAL_NAMES_free>>;
using ExtensionPtr = std::unique_ptr<X509_EXTENSION, OpenSslFree<X509_EXTENSION_free>>;

} // namespace quenvolta
