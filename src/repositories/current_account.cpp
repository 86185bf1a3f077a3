#include "repositories/current_account.h"

#include "accounts/windows_account_names.h"
#include "model/computer_directory.h"
#include "model/model.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <array>
#include <pwd.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// The managed computer may ask a directory of its network.
constexpr int kLongestSearchMs = 5000;
constexpr unsigned long kPauseMs = 10;
constexpr std::int32_t kMostObjects = 500;

// Who signs in to the managed computer: named with it ("anna@build1"), or as here.
QString SignInName(const QString& computer)
{
    if (computer.contains(u'@'))
        return computer.section(u'@', 0, 0);
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16384> texts{};
    ::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found);
    return found == nullptr ? QString() : QString::fromLocal8Bit(entry.pw_name);
}

CurrentAccount FindRemoteAccount(CModel& model, const QString& name)
{
    const auto directory = model.OpenComputerDirectory();
    DirectorySearch search = directory->Search(name, {DirectoryObjectKind::User}, kMostObjects);
    const QDeadlineTimer deadline(kLongestSearchMs);
    std::optional<DirectoryAnswer> answer = search.TakeAnswer();
    while (!answer && !deadline.hasExpired()) {
        QThread::msleep(kPauseMs);
        answer = search.TakeAnswer();
    }
    if (!answer)
        return {};
    const auto account = std::ranges::find(answer->objects, name, &DirectoryObject::name);
    if (account == answer->objects.end())
        return {};
    return {account->sid, account->domain + u'\\' + account->name};
}

} // namespace

CurrentAccount FindCurrentAccount(CModel& model)
{
    if (!model.ComputerName().isEmpty()) {
        const QString name = SignInName(model.ComputerName());
        return name.isEmpty() ? CurrentAccount{} : FindRemoteAccount(model, name);
    }
    const QString sid = u"S-1-22-1-%1"_s.arg(::getuid()); // how the server names the accounts of its system
    return {sid, WindowsAccountNames(model, {sid}).first()};
}

} // namespace quenvolta
