#pragma once

#include "provider/provider_texts.h"

/// The words about the web service.
namespace quenvolta::webtexts
{

using replies::Text;

inline constexpr Text kNoApache{u"The web service cannot be started: the Apache HTTP Server is not installed on the "
                                u"server. Install the package apache2-bin."};
inline constexpr Text kNoModule{u"The web service cannot be started: Apache's module '%1' is not installed on the "
                                u"server. Install the package %2."};
inline constexpr Text kRefused{u"Apache refuses the configuration of the web service: %1"};
inline constexpr Text kNotStarted{u"The web service did not start: %1"};
inline constexpr Text kEndedEarly{u"The process ended. %1"};
inline constexpr Text kTimedOut{u"It did not answer in 30 seconds."};
inline constexpr Text kNotStopped{u"The web service did not stop in 30 seconds. It goes on stopping."};
inline constexpr Text kNotTaken{
    u"The web service did not take the new configuration, and goes on with the one before: %1"};
inline constexpr Text kAlreadyRunning{u"The web service is running already."};
inline constexpr Text kNotRunning{u"The web service is not running."};
inline constexpr Text kRootsFolder{
    u"The web service cannot be started: the server's data folder '%1' belongs to root, and Apache does not serve as "
    u"root. Give it to an account for the service, for example: chown -R %2 %1. That account must be able to enter the "
    u"folders above it."};
inline constexpr Text kNoCertificate{
    u"The server has no certificate for secure connections. Create or import one on the Certificate page first."};
inline constexpr Text kNoKeytab{
    u"Integrated authentication needs the server's Kerberos keys, and there is no file '%1'. "
    u"Put a keytab for HTTP/%2 there that the web service's account can read."};
inline constexpr Text kNoAddresses{
    u"The web service cannot be started: the list of addresses to listen on is empty. Add an address on the Network "
    u"page."};
inline constexpr Text kRootMissing{
    u"The web service cannot be started: the folder of the repositories '%1' does not exist. Choose another one on the "
    u"Storage page, or make it available."};
inline constexpr Text kOperationBusy{u"Another console is starting or stopping the web service. Try again later."};
inline constexpr Text kCannotWrite{u"Cannot write '%1': %2."};

inline constexpr Text kInvalidPort{u"'%1' is not a port. Ports go from 1 to 65535."};
inline constexpr Text kInvalidAddress{u"'%1' is not an IP address."};
inline constexpr Text kCannotListen{u"The web service cannot listen on '%1': %2."};
inline constexpr Text kPortInUse{u"Another program uses port %1. Choose another port, or stop that program."};
inline constexpr Text kCannotBeWritten{
    u"The value '%1' holds characters that cannot stand in the configuration of the web service."};
inline constexpr Text kInvalidServerName{
    u"'%1' cannot be a server's name: names have 1 to 253 characters, with no blanks "
    u"and none of the signs that have a meaning of their own in an address."};
inline constexpr Text kInvalidAuthentication{
    u"'%1' is no kind of authentication. It is 0 (Subversion) or 1 (Windows)."};
inline constexpr Text kNoAuthenticationMethod{
    u"Windows authentication needs at least one method: basic or integrated authentication."};

inline constexpr Text kRootNotAbsolute{u"'%1' is not the full path of a folder."};
inline constexpr Text kRootNotAFolder{u"'%1' exists, and is not a folder."};
inline constexpr Text kCannotMakeRoot{u"Cannot make the folder '%1': %2."};
inline constexpr Text kRootUnusable{
    u"The server's account '%1' cannot read and change the folder '%2'. Give it the right "
    u"to, and the right to enter the folders above it."};
inline constexpr Text kCannotHandOver{u"Cannot give '%1' to the server's account: %2."};

} // namespace quenvolta::webtexts
