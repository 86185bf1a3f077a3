// The permissions of a large server: read, changed at one place, and made into rules from nothing, beside Subversion's
// own tool that parses the same rules.
#include "provider/accounts/account_store.h"
#include "ratio_report.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace quenvolta;
using namespace quenvolta::bench;

namespace
{

constexpr int kUsers = 5'000;
constexpr int kGroups = 500;
constexpr int kEntries = 10'000;
constexpr int kEntriesOfPlace = 4;
constexpr int kRepositories = 50;
constexpr int kRepetitions = 9;

QString Name(const char* kind, int number)
{
    return QLatin1StringView(kind) + QString::number(number);
}

// Users in some groups each, groups in groups, and entries for both on repositories and the folders in them.
void Fill(AccountModel& model)
{
    for (int user = 0; user < kUsers; ++user)
        model.AddUser(Name("user", user), QByteArray(60, 'h'));
    for (int group = 0; group < kGroups; ++group) {
        AccountModel::Members members;
        for (int i = 0; i < 30; ++i)
            members.append({PrincipalKind::User, Name("user", (group * 10 + i * 7) % kUsers)});
        if (group % 5 == 4)
            members.append({PrincipalKind::Group, Name("group", group - 1)});
        model.AddGroup(Name("group", group), members);
    }
    for (int place = 0; place < kEntries / kEntriesOfPlace; ++place) {
        const QString repository = Name("repository", place % kRepositories);
        const int folder = place / kRepositories;
        const QString path =
            folder == 0 ? QStringLiteral("/")
                        : u'/' + Name("project", folder / 2) + (folder % 2 == 1 ? QString() : QStringLiteral("/trunk"));
        PermissionList entries;
        for (int i = 0; i < kEntriesOfPlace; ++i) {
            const bool isGroup = i % 2 == 0;
            const Principal account{isGroup ? PrincipalKind::Group : PrincipalKind::User,
                                    isGroup ? Name("group", (place * 3 + i) % kGroups)
                                            : Name("user", (place * 11 + i) % kUsers)};
            entries.append({account, static_cast<Access>((place + i) % 3)});
        }
        model.SetPermissions({repository, path}, entries);
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("data"));
    DataFolder data(path);
    AccountStore store(data);
    store.Repair();
    store.Change(CancelCheck(), &Fill);
    const QString rules = path + u'/' + AccountStore::kRulesFile.toString();
    AddSingleRuns("read", kRepetitions, [&](benchmark::State& state) {
        for (auto unused : state) {
            const AccountStore fresh(data); // one that has nothing in memory yet
            qsizetype entries = 0;
            const auto model = fresh.Read();
            for (const PermissionList& list : model->AllPermissions())
                entries += list.size();
            if (entries != kEntries || model->Users().size() != kUsers)
                state.SkipWithError("the permissions are not whole");
        }
    });
    int change = 0;
    AddSingleRuns("change", kRepetitions, [&](benchmark::State& state) {
        for (auto unused : state) {
            store.Change(CancelCheck(), [&](AccountModel& model) {
                model.SetPermissions({QStringLiteral("repository0"), QStringLiteral("/")},
                                     {{{PrincipalKind::User, Name("user", ++change)}, Access::ReadWrite}});
            });
        }
    });
    AddSingleRuns("write", kRepetitions, [&](benchmark::State& state) {
        for (auto unused : state) {
            QFile::remove(rules); // nothing of it is known to be good then
            store.RenewRules();
        }
    });
    AddSingleRuns("svnauthz", kRepetitions, [&](benchmark::State& state) {
        for (auto unused : state)
            if (QProcess::execute(QStringLiteral("svnauthz"), {QStringLiteral("validate"), rules}) != 0)
                state.SkipWithError("the rules are refused");
    });
    return RunWithRatios(argc, argv, {{"read", "svnauthz"}, {"change", "svnauthz"}, {"write", "svnauthz"}});
}
