#include "accounts/password_generator.h"

#include <QRandomGenerator>
#include <QStringView>

#include <algorithm>
#include <array>

namespace quenvolta
{

namespace
{

constexpr qsizetype kLength = 20;
constexpr std::array kKinds{QStringView(u"abcdefghijkmnpqrstuvwxyz"), QStringView(u"ABCDEFGHJKLMNPQRSTUVWXYZ"),
                            QStringView(u"23456789"), QStringView(u"-_.+!=")};

bool HasEveryKind(const QString& password)
{
    return std::ranges::all_of(kKinds, [&](QStringView kind) {
        return std::ranges::any_of(password, [kind](QChar c) { return kind.contains(c); });
    });
}

} // namespace

QString GeneratePassword()
{
    QString alphabet;
    for (const QStringView kind : kKinds)
        alphabet += kind;
    QString password(kLength, u' ');
    do { // again, rather than to force a kind into a place, so that every good password is as likely as any other
        std::ranges::generate(
            password, [&] { return alphabet[QRandomGenerator::system()->bounded(static_cast<int>(alphabet.size()))]; });
    } while (!HasEveryKind(password));
    return password;
}

} // namespace quenvolta
