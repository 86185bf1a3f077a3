#pragma once

#include <QString>

namespace quenvolta
{

/// What ssh wants to know of a person.
struct AskpassPrompt {
    enum class Kind {
        Secret,  ///< a password or a passphrase
        HostKey, ///< whether the key of a computer is to be trusted
        Confirm, ///< whether a key of the agent may be used
        Notice,  ///< nothing: only to be shown
    };

    Kind kind = Kind::Secret;
    /// Plain text without control characters, of bounded length.
    QString text = {};
    /// The fingerprint of the computer's key; empty for the other kinds.
    QString fingerprint = {};
};

/// Reads the prompt as ssh gives it, with its hint (SSH_ASKPASS_PROMPT).
AskpassPrompt ReadAskpassPrompt(const QString& prompt, const QString& hint);

} // namespace quenvolta
