#include "activities_fixture.h"
#include "kill_count.h"
#include "memory_folder.h"
#include "provider/accounts/account_document.h"
#include "provider/accounts/account_store.h"
#include "provider/svn/svn_pool.h"
#include "provider/web/apache_installation.h"

#include <QRandomGenerator>

#include <algorithm>
#include <svn_repos.h>

namespace quenvolta
{

namespace
{

/// What a console can see of a server, and how the changes of this test change it.
struct Seen {
    QStringList groups;
    QMap<QString, QStringList> repositories; ///< "group level" of each permission at "/"
    QStringList global;                      ///< the same of the server
    QString hook;                            ///< of the repository "kept"
    QString serverName;

    bool operator==(const Seen&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Seen& seen)
{
    out << "groups " << seen.groups.join(u' ').toStdString() << "; server " << seen.global.join(u',').toStdString()
        << "; hook " << seen.hook.toStdString() << "; name " << seen.serverName.toStdString();
    for (auto each = seen.repositories.cbegin(); each != seen.repositories.cend(); ++each)
        out << "; " << each.key().toStdString() << ": " << each->join(u',').toStdString();
    return out;
}

struct Change {
    QString target;
    QString method;
    QList<std::pair<QString, Variant>> in;
    Seen after;
};

/// A true provider that is killed while it makes changes.
class ProviderKillTest : public ActivityTest
{
protected:
    void SetUp() override
    {
        m_temporary = QTemporaryDir(MemoryFolder());
        m_root = m_temporary.path() + u"/root"_s;
        m_outside = m_temporary.path() + u"/outside"_s;
        m_data = m_temporary.path() + u"/data"_s;
        m_store = RepositoryStore(m_root);
        ActivityTest::SetUp();
    }

    WbemObjectPtr Spawn(const QString& className)
    {
        WbemObjectPtr& definition = m_definitions[className];
        if (!definition) {
            EXPECT_EQ(m_services->GetObject(className, 0, nullptr, &definition), S_OK);
        }
        WbemObjectPtr instance;
        EXPECT_EQ(definition->SpawnInstance(&instance), S_OK);
        return instance;
    }

    Variant Permissions(const QList<std::pair<QString, int>>& entries)
    {
        QList<WbemObjectPtr> objects;
        for (const auto& [group, level] : entries) {
            const WbemObjectPtr account = Spawn(u"Quenvolta_Group"_s);
            account->Put(u"Name"_s, group);
            const WbemObjectPtr entry = Spawn(u"Quenvolta_PermissionEntry"_s);
            entry->Put(u"Account"_s, account);
            entry->Put(u"AccessLevel"_s, static_cast<std::uint32_t>(level));
            objects.append(entry);
        }
        return objects;
    }

    static QStringList Shown(const QList<std::pair<QString, int>>& entries)
    {
        QStringList shown;
        for (const auto& [group, level] : entries)
            shown.append(group + u' ' + QString::number(level));
        return shown;
    }

    // One change after the other of every kind, on the state that is known to stand.
    Change NextChange(const Seen& now)
    {
        Change change;
        change.after = now;
        const int step = m_step++;
        const QString name = u"n%1"_s.arg(step);
        const QString oldest = now.groups.value(0);
        const QString repositories = u"Quenvolta_Repository"_s;
        // The repository that came last and isn't the one that stays.
        QString repository;
        for (auto each = now.repositories.keyBegin(); each != now.repositories.keyEnd(); ++each)
            repository = *each == kKept ? repository : *each;
        const QList<std::pair<QString, int>> entries{{now.groups.value(0), step % 3},
                                                     {now.groups.value(now.groups.size() - 1), (step + 1) % 3}};
        int kind = step % kKinds;
        if (now.groups.size() < 2)
            kind = kCreateGroup; // a change that was lost is missing to those that follow
        else if (repository.isEmpty() && (kind == kSecure || kind == kRename || kind == kDelete))
            kind = kCreate;
        switch (kind) {
        case kCreateGroup:
        case kCreateGroup + 1:
            change.target = u"Quenvolta_Group"_s;
            change.method = u"Create"_s;
            change.in = {{u"Name"_s, name}, {u"Members"_s, QStringList{}}};
            change.after.groups.append(name);
            change.after.groups.sort();
            break;
        case 2:
            change = {repositories, u"SetGlobalSecurity"_s, {{u"Permissions"_s, Permissions(entries)}}, now};
            change.after.global = Shown(entries);
            break;
        case kCreate:
            change = {repositories, u"Create"_s, {{u"Name"_s, name}}, now};
            change.after.repositories.insert(name, {});
            break;
        case kSecure:
            change = {Path(repository),
                      u"SetSecurity"_s,
                      {{u"Path"_s, u"/"_s}, {u"Permissions"_s, Permissions(entries)}},
                      now};
            change.after.repositories[repository] = Shown(entries);
            break;
        case kRename:
            change = {repositories, u"Rename"_s, {{u"OldName"_s, repository}, {u"NewName"_s, name}}, now};
            change.after.repositories.insert(name, change.after.repositories.take(repository));
            break;
        case 6:
            change = {Path(kKept), u"SetHook"_s, {{u"Kind"_s, 0}, {u"Hook"_s, "#!/bin/sh\n# "_L1 + name}}, now};
            change.after.hook = "#!/bin/sh\n# "_L1 + name;
            break;
        case 7:
            change = {u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s,
                      u"SetServerName"_s,
                      {{u"UseCustom"_s, true}, {u"CustomServerName"_s, name}},
                      now};
            change.after.serverName = name;
            break;
        case kDelete:
            change = {repositories, u"Delete"_s, {{u"Name"_s, repository}}, now};
            change.after.repositories.remove(repository);
            break;
        default:
            change = {u"Quenvolta_Group"_s, u"Delete"_s, {{u"Name"_s, oldest}}, now};
            change.after.groups.removeFirst();
            const auto forget = [&oldest](QStringList& list) {
                list.removeIf([&](const QString& each) { return each.startsWith(oldest + u' '); });
            };
            forget(change.after.global);
            for (QStringList& list : change.after.repositories)
                forget(list);
        }
        return change;
    }

    static QString Path(const QString& repository) { return u"Quenvolta_Repository.Name=\"%1\""_s.arg(repository); }

    WbemCallResultPtr Start(const Change& change, const QUuid& request)
    {
        const QString className = change.target.section(u'.', 0, 0);
        WbemObjectPtr signature;
        WbemObjectPtr in;
        Spawn(className);
        EXPECT_EQ(m_definitions[className]->GetMethod(change.method, &signature, nullptr), S_OK);
        EXPECT_EQ(signature->SpawnInstance(&in), S_OK);
        for (const auto& [name, value] : change.in)
            EXPECT_EQ(in->Put(name, value), S_OK) << name.toStdString();
        std::dynamic_pointer_cast<IRequestIdentity>(m_services)->SetNextRequestId(request);
        WbemCallResultPtr result;
        EXPECT_EQ(m_services->ExecMethod(change.target, change.method, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, in,
                                         nullptr, &result),
                  S_OK);
        return result;
    }

    QList<WbemObjectPtr> Instances(const QString& className) const
    {
        EnumWbemClassObjectPtr all;
        QList<WbemObjectPtr> objects;
        EXPECT_EQ(m_services->CreateInstanceEnum(className, 0, nullptr, &all), S_OK);
        EXPECT_EQ(all->Next(WBEM_INFINITE, 10'000, &objects), S_FALSE);
        return objects;
    }

    template <typename Type>
    static Type Value(const WbemObjectPtr& object, const QString& property)
    {
        Variant value;
        EXPECT_EQ(object->Get(property, &value, nullptr), S_OK) << property.toStdString();
        return std::holds_alternative<Type>(value) ? std::get<Type>(value) : Type();
    }

    QStringList PermissionsAt(const QString& target, const QString& method, const Variant& path)
    {
        WbemObjectPtr signature;
        WbemObjectPtr in;
        WbemObjectPtr out;
        if (const QString* text = std::get_if<QString>(&path)) {
            m_definitions[u"Quenvolta_Repository"_s]->GetMethod(method, &signature, nullptr);
            signature->SpawnInstance(&in);
            in->Put(u"Path"_s, *text);
        }
        EXPECT_EQ(m_services->ExecMethod(target, method, 0, nullptr, in, &out, nullptr), S_OK);
        QStringList shown;
        for (const WbemObjectPtr& entry : Value<QList<WbemObjectPtr>>(out, u"Permissions"_s))
            shown.append(Value<QString>(Value<WbemObjectPtr>(entry, u"Account"_s), u"Name"_s) + u' ' +
                         QString::number(Value<std::uint32_t>(entry, u"AccessLevel"_s)));
        return shown;
    }

    // Everything as the provider tells it.
    Seen Look()
    {
        Seen seen;
        Spawn(u"Quenvolta_Repository"_s);
        for (const WbemObjectPtr& group : Instances(u"Quenvolta_Group"_s))
            seen.groups.append(Value<QString>(group, u"Name"_s));
        for (const WbemObjectPtr& repository : Instances(u"Quenvolta_Repository"_s)) {
            const QString name = Value<QString>(repository, u"Name"_s);
            Variant revision;
            repository->Get(u"TotalRevisions"_s, &revision, nullptr);
            EXPECT_TRUE(std::holds_alternative<std::uint32_t>(revision)) << name.toStdString() << " can't be opened";
            seen.repositories.insert(name, PermissionsAt(Path(name), u"GetSecurity"_s, u"/"_s));
        }
        seen.global = PermissionsAt(u"Quenvolta_Repository"_s, u"GetGlobalSecurity"_s, {});
        QFile hook(PathOf(kKept) + "/hooks/post-commit"_L1);
        seen.hook = hook.open(QIODevice::ReadOnly) ? QString::fromUtf8(hook.readAll()) : QString();
        WbemObjectPtr service;
        m_services->GetObject(u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s, 0, nullptr, &service);
        seen.serverName = Value<QString>(service, u"ServerName"_s);
        return seen;
    }

    // What the web service would read, before any provider has a chance to mend it.
    void ExpectWholeFiles() const
    {
        const auto content = [this](const QString& name) {
            QFile file(m_data + u'/' + name);
            EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
            return file.readAll();
        };
        EXPECT_NO_THROW(AccountDocument::Read(content(u"accounts.json"_s), u"accounts"_s));
        for (const QByteArray& line : content(u"htpasswd"_s).split('\n'))
            EXPECT_TRUE(line.isEmpty() || line.size() - line.indexOf(':') == 61) << line.constData();
        SvnPool pool;
        svn_authz_t* rules = nullptr;
        svn_error_t* error = svn_repos_authz_read4(&rules, QFile::encodeName(m_data + "/authz"_L1).constData(), nullptr,
                                                   TRUE, nullptr, nullptr, nullptr, pool.Get(), pool.Get());
        EXPECT_EQ(error, nullptr);
        svn_error_clear(error);
        for (const RepositoryRecord& record : m_store.List())
            EXPECT_TRUE(record.youngestRevision.has_value()) << record.name.toStdString();
    }

    // Names that only something unfinished has.
    QStringList Leftovers() const
    {
        QStringList leftovers;
        QDirIterator files(m_temporary.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            files.next();
            if (files.fileName().startsWith(u'.') || files.fileName().endsWith(".new"_L1) ||
                files.filePath().contains("/transactions/"_L1))
                leftovers.append(files.filePath());
        }
        return leftovers;
    }

    static constexpr int kCreateGroup = 0;
    static constexpr int kCreate = 3;
    static constexpr int kSecure = 4;
    static constexpr int kRename = 5;
    static constexpr int kDelete = 8;
    static constexpr int kKinds = 10;
    const QString kKept = u"kept"_s;
    QHash<QString, WbemObjectPtr> m_definitions;
    int m_step = 0;
};

} // namespace

TEST_F(ProviderKillTest, EveryAcknowledgedChangeStandsAndNothingHalfStays)
{
    m_store.Create(kKept);
    Seen now = Look();
    QHash<QString, qint64> quickest; // microseconds that a change of a kind took at least
    int interrupted = 0;
    QRandomGenerator* random = QRandomGenerator::global();
    const int kills = KillCount(150);
    for (int kill = 0; kill < kills; ++kill) {
        // Some changes that are answered, so that each kind is killed as often as the others.
        for (int i = random->bounded(3); i > 0; --i) {
            const Change change = NextChange(now);
            QElapsedTimer timer;
            timer.start();
            ASSERT_EQ(EndOf(Start(change, QUuid::createUuid())), S_OK) << change.method.toStdString();
            qint64& least = quickest[change.target.section(u'.', 0, 0) + change.method];
            const qint64 took = timer.nsecsElapsed() / 1000;
            least = least == 0 ? took : std::min(least, took);
            now = change.after;
        }
        const Change change = NextChange(now);
        const QUuid request = QUuid::createUuid();
        const pid_t provider = Provider();
        const qint64 usual = quickest.value(change.target.section(u'.', 0, 0) + change.method, 3000);
        const WbemCallResultPtr call = Start(change, request);
        ::usleep(static_cast<useconds_t>(random->bounded(static_cast<double>(usual)) * 1.1));
        ASSERT_EQ(::kill(provider, SIGKILL), 0);
        const HRESULT end = EndOf(call);
        ASSERT_TRUE(end == S_OK || end == RPC_E_DISCONNECTED) << end << " of " << change.method.toStdString();
        interrupted += end == S_OK ? 0 : 1;
        ExpectWholeFiles();

        Connect();
        ASSERT_FALSE(HasFatalFailure());
        EXPECT_EQ(Leftovers().join(u'\n').toStdString(), std::string()) << "after " << change.method.toStdString();
        Seen found = Look();
        if (end == S_OK || found != now) {
            ASSERT_EQ(found, change.after) << "after " << change.method.toStdString();
        }
        // A console asks again, as for every call that got no answer.
        if (end != S_OK && random->bounded(2) == 0) {
            ASSERT_EQ(EndOf(Start(change, request)), S_OK) << "repeated " << change.method.toStdString();
            found = Look();
            ASSERT_EQ(found, change.after) << "repeated " << change.method.toStdString();
        }
        now = found;
        ASSERT_FALSE(HasFailure()) << "kill " << kill << " in " << change.method.toStdString();
    }
    EXPECT_GT(interrupted, kills / 20);
}

} // namespace quenvolta
