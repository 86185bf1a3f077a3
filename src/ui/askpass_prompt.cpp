#include "ui/askpass_prompt.h"

#include "platform/channel/channel_failure.h"

#include <QRegularExpression>

namespace quenvolta
{

using namespace Qt::StringLiterals;

AskpassPrompt ReadAskpassPrompt(const QString& prompt, const QString& hint)
{
    using Kind = AskpassPrompt::Kind;
    static const QRegularExpression question(u"\\(yes/no[^)]*\\)\\??\\s*$"_s);
    static const QRegularExpression fingerprint(u"\\b((?:SHA256|SHA512|MD5):[A-Za-z0-9+/=:]+)"_s);
    AskpassPrompt read{.text = PlainWords(prompt.toUtf8())};
    if (hint == u"confirm") {
        read.kind = Kind::Confirm;
    } else if (hint == u"none") {
        read.kind = Kind::Notice;
    } else if (read.text.contains(question)) {
        read.kind = Kind::HostKey;
        read.fingerprint = fingerprint.match(read.text).captured(1);
        read.text.remove(question);
        read.text = read.text.trimmed();
    }
    return read;
}

} // namespace quenvolta
