#pragma once

#include "provider/provider_texts.h"

/// The words of the certificates.
namespace quenvolta::certificatetexts
{

using replies::Text;

inline constexpr Text kFieldEmpty{u"The certificate needs the field '%1'. Enter it and try again."};
inline constexpr Text kFieldTooLong{u"The field '%1' of the certificate is longer than %2 characters. Shorten it."};
inline constexpr Text kFieldInvalid{
    u"The field '%1' of the certificate, '%2', holds characters that a certificate can't hold. Correct it."};
inline constexpr Text kCountryInvalid{
    u"'%1' is not a country code. Enter the two letters of the country, or leave it empty."};
inline constexpr Text kNameInvalid{u"'%1' is neither a host name nor an IP address. Correct the name."};
inline constexpr Text kTooManyNames{u"A certificate can have at most %1 additional names."};
inline constexpr Text kDaysInvalid{u"A certificate can't be valid for %1 days. Choose 1 to %2 days."};

inline constexpr Text kCannotMakeKey{u"Cannot make a private key."};
inline constexpr Text kCannotMakeCertificate{u"Cannot make the certificate."};
inline constexpr Text kCannotMakeRequest{u"Cannot make the certificate request."};
inline constexpr Text kCannotWriteText{u"Cannot write the certificate or its key as text."};

inline constexpr Text kTextTooLong{u"The text of the certificate is longer than %1 characters."};
inline constexpr Text kTooManyBlocks{u"The text holds more than %1 certificates and keys. Leave out what the server "
                                     u"does not need."};
inline constexpr Text kNoCertificate{u"The text holds no certificate. Choose the file that the certification "
                                     u"authority sent."};
inline constexpr Text kCertificateDamaged{u"A certificate in the text is damaged or incomplete."};
inline constexpr Text kKeyKindUnsupported{
    u"The certificate of '%1' has a key of a kind or size that the web service can't use. Use an RSA key of 2048 to "
    u"8192 bits, or an elliptic-curve key."};
inline constexpr Text kSignatureTooWeak{
    u"The certificate of '%1' is signed in a way that clients don't trust any more. Ask for one signed with SHA-256."};
inline constexpr Text kDatesInvalid{u"The certificate of '%1' doesn't say when it is valid."};

inline constexpr Text kKeyDoesNotFit{u"The certificate and the private key do not match each other."};
inline constexpr Text kNoFittingKey{u"The certificate does not match the private key of the server or of a request "
                                    u"that was prepared there, and brings no key of its own."};
inline constexpr Text kKeyUnreadable{u"The private key that comes with the certificate can't be read. It must not be "
                                     u"protected by a password."};

inline constexpr Text kCannotUseFolder{u"Cannot use the folder '%1' of the server's certificates: %2."};
inline constexpr Text kCannotRead{u"Cannot read '%1': %2."};
inline constexpr Text kCannotWrite{u"Cannot write '%1': %2."};
inline constexpr Text kReadBackDiffers{u"what was read back is not what was written"};
inline constexpr Text kFileTooLarge{u"it is too large"};
inline constexpr Text kInstalledDamaged{u"The server's certificate in '%1' can't be read. Install another one."};

} // namespace quenvolta::certificatetexts
