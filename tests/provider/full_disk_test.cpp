#include "provider/accounts/account_store.h"
#include "provider/call_failure.h"
#include "server_fixture.h"
#include "small_disk.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>

#include <functional>
#include <grp.h>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>

namespace quenvolta
{

namespace
{

constexpr uid_t kNobody = 65534;

/// A server on a disk that is full, or in folders that can't be written, in a process of its own.
class FullDiskTest : public ServerFixture
{
protected:
    struct Change {
        const char* what;
        QString path;
        QString method;
        Parameters in;
        const char* folder = ""; ///< below the data folder, the one that it writes to
    };

    /// Runs it as an account that the rights of files count for, in a process that may do what it likes to itself.
    static void InProcess(const std::function<void()>& test)
    {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            try {
                test();
            } catch (...) {
                ADD_FAILURE() << CurrentError().what();
            }
            std::fflush(nullptr);
            ::_exit(HasFailure() ? 1 : 0);
        }
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << "see above";
    }

    /// A server in the folder, with something of everything.
    void Open(const QString& folder)
    {
        m_path = folder + u"/data"_s;
        m_open.emplace(m_path);
        m_server = MakeServerNamespace(*m_open, ServedVersion(u"3.3.1"_s));
        CleanLeftovers(*m_open);
        AccountStore(*m_open).Change(CancelCheck(), [](AccountModel& model) {
            for (int i = 0; i < 100; ++i) // so that the accounts take some pages
                model.AddUser(u"user%1"_s.arg(i), QByteArray(60, 'h'));
        });
        EXPECT_EQ(CodeOf({"", u"Quenvolta_User"_s, u"Create"_s, {{u"Name"_s, u"ann"_s}, {u"Password"_s, u"pw"_s}}}),
                  S_OK);
        EXPECT_EQ(CodeOf({"", u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, u"r"_s}}}), S_OK);
        EXPECT_EQ(CodeOf({"", kRepository, u"SetHook"_s, {{u"Kind"_s, 4}, {u"Hook"_s, u"#!/bin/sh\n"_s}}}), S_OK);
        EXPECT_EQ(CodeOf({"", kService, u"CreateSelfSignedCertificate"_s, Subject(u"first"_s)}), S_OK);
        EXPECT_EQ(CodeOf({"", kService, u"SetServerName"_s, ServerName(u"first"_s)}), S_OK);
    }

    static Parameters Subject(const QString& commonName)
    {
        return {{u"CommonName"_s, commonName},  {u"AdditionalNames"_s, QStringList()},
                {u"Organization"_s, QString()}, {u"OrganizationUnit"_s, QString()},
                {u"CountryCode"_s, QString()},  {u"State"_s, QString()},
                {u"City"_s, QString()},         {u"Days"_s, 30}};
    }
    static Parameters ServerName(const QString& name)
    {
        return {{u"UseCustom"_s, true}, {u"CustomServerName"_s, name}};
    }

    QList<Change> Changes()
    {
        QList<WbemObjectPtr> administrators;
        for (int i = 0; i < 2000; ++i) {
            InstanceRow account(m_server->Classes().Find(u"Quenvolta_WindowsAccount"_s));
            account.Set(u"SID", u"S-1-22-1-%1"_s.arg(i));
            administrators.append(account.ToObject());
        }
        InstanceRow everyone(m_server->Classes().Find(u"Quenvolta_Everyone"_s));
        everyone.Set(u"Name", u"Everyone"_s);
        InstanceRow entry(m_server->Classes().Find(u"Quenvolta_PermissionEntry"_s));
        entry.Set(u"Account", everyone.ToObject()).Set(u"AccessLevel", std::uint32_t{1});
        return {
            {"user", u"Quenvolta_User"_s, u"Create"_s, {{u"Name"_s, u"ben"_s}, {u"Password"_s, u"pw"_s}}},
            {"group",
             u"Quenvolta_Group"_s,
             u"Create"_s,
             {{u"Name"_s, u"devs"_s}, {u"Members"_s, QStringList{u"Quenvolta_User.Name=\"ann\""_s}}}},
            {"permissions",
             kRepository,
             u"SetSecurity"_s,
             {{u"Path"_s, u"/"_s}, {u"Permissions"_s, QList<WbemObjectPtr>{entry.ToObject()}}}},
            {"settings", kService, u"SetServerName"_s, ServerName(u"other"_s)},
            {"roles", kService, u"SetServerAdmins"_s, {{u"Admins"_s, administrators}}},
            {"repository", u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, u"new"_s}}, "/repositories"},
            {"folders",
             kRepository,
             u"CreateFolders"_s,
             {{u"Folders"_s, QStringList{u"/a"_s, u"/a/b"_s}}, {u"Message"_s, QString(9000, u'm')}},
             "/repositories/r/db/transactions"},
            {"hook",
             kRepository,
             u"SetHook"_s,
             {{u"Kind"_s, 4}, {u"Hook"_s, "#!/bin/sh\n"_L1 + QString(20'000, u'#')}},
             "/repositories/r/hooks"},
            {"certificate", kService, u"CreateSelfSignedCertificate"_s, Subject(u"second"_s), "/certificates"},
        };
    }

    /// The code that a console gets; what it is told is in m_error.
    HRESULT CodeOf(const Change& change)
    {
        m_error.clear();
        try {
            Exec(change.path, change.method, change.in);
        } catch (...) {
            const ProviderError error = CurrentError();
            m_error = error.Description();
            EXPECT_GT(m_error.size(), 20) << change.what;
            return error.Code();
        }
        return S_OK;
    }

    /// The accounts' file that was replaced takes room until the new one is read.
    void ReadAccounts()
    {
        CallContext context{m_server->Classes(), m_rows, {}, {}, false};
        m_server->GetObject(kRepository, context);
    }

    /// Every file and folder with what it holds; not what is there for the moment.
    QMap<QString, QByteArray> State() const
    {
        QMap<QString, QByteArray> state;
        QDirIterator entries(m_path, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QFileInfo entry(entries.next());
            // Subversion's library leaves transactions that it could only begin to begin, and revisions that it could
            // not finish; "current", which is compared, says that they aren't there.
            if (entry.filePath().contains("/db/t"_L1) || entry.filePath().contains("/db/rev"_L1))
                continue;
            QFile file(entry.filePath());
            state[entry.filePath().mid(m_path.size())] = !entry.isFile()                  ? ""
                                                         : file.open(QIODevice::ReadOnly) ? file.readAll()
                                                                                          : "unreadable";
        }
        return state;
    }

    /// The paths at which two states differ.
    static std::string Difference(const QMap<QString, QByteArray>& one, const QMap<QString, QByteArray>& other)
    {
        QMap<QString, QByteArray> all = one;
        all.insert(other);
        QStringList paths;
        for (auto each = all.keyBegin(); each != all.keyEnd(); ++each) {
            const QByteArray was = one.value(*each, "missing");
            const QByteArray is = other.value(*each, "missing");
            if (was != is)
                paths.append(*each + " was "_L1 + QString::fromUtf8(was.left(60)) + ", is "_L1 +
                             QString::fromUtf8(is.left(60)));
        }
        return paths.join(u'\n').toStdString();
    }

    const QString kRepository = u"Quenvolta_Repository.Name=\"r\""_s;
    const QString kService = u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s;
    QString m_path;
    std::optional<DataFolder> m_open;
    QString m_error;
};

} // namespace

TEST_F(FullDiskTest, ChangesThatDoNotFitAreRefusedAndLeaveTheOldStateWhole)
{
    InProcess([this] {
        const QString folder = m_folder.filePath(u"disk"_s);
        ASSERT_TRUE(QDir().mkdir(folder));
        const SmallDisk disk(folder);
        Open(folder);
        for (const Change& change : Changes()) {
            const auto before = State();
            ReadAccounts();
            int refused = 0;
            // With a little more room each time, so that it fails at every step that it has.
            for (int pages = 0;; pages += pages < 8 ? 1 : pages / 4) {
                disk.LeavePages(pages);
                const HRESULT code = CodeOf(change);
                disk.Free();
                ReadAccounts(); // and settings: a journal that could not even be rolled back is now
                if (code == S_OK)
                    break;
                ++refused;
                EXPECT_TRUE(code == WBEM_E_OUT_OF_DISK_SPACE || (!disk.IsMounted() && code == WBEM_E_FAILED))
                    << change.what << " with " << pages << " pages: " << m_error.toStdString();
                EXPECT_EQ(Difference(before, State()), "")
                    << change.what << " with " << pages << " pages: " << m_error.toStdString();
                ASSERT_LT(pages, 2000) << change.what << ": " << m_error.toStdString();
            }
            EXPECT_GT(refused, 0) << change.what;
            EXPECT_NE(Difference(before, State()), "") << change.what;
        }
    });
}

TEST_F(FullDiskTest, FoldersThatCannotBeWrittenAreNamedAndTheOldStateStays)
{
    InProcess([this] {
        QString folder = m_folder.path();
        if (::geteuid() == 0) {
            ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0777), 0);
            ASSERT_TRUE(::setgroups(0, nullptr) == 0 && ::setresgid(kNobody, kNobody, kNobody) == 0 &&
                        ::setresuid(kNobody, kNobody, kNobody) == 0);
            folder += u"/other"_s; // the fixture's is root's
            ASSERT_TRUE(QDir().mkdir(folder));
        }
        Open(folder);
        for (const Change& change : Changes()) {
            const auto before = State();
            const QByteArray at = QFile::encodeName(m_path) + change.folder;
            const QByteArray settings = QFile::encodeName(m_path + "/registry.db"_L1);
            ASSERT_EQ(::chmod(at.constData(), 0500), 0);
            ::chmod(settings.constData(), 0400);
            const HRESULT code = CodeOf(change);
            ASSERT_EQ(::chmod(at.constData(), 0700), 0);
            ::chmod(settings.constData(), 0600);
            EXPECT_EQ(code, WBEM_E_ACCESS_DENIED) << change.what << ": " << m_error.toStdString();
            EXPECT_EQ(Difference(before, State()), "") << change.what;
            EXPECT_EQ(CodeOf(change), S_OK) << change.what << ": " << m_error.toStdString();
        }
    });
}

} // namespace quenvolta
