#include "server_fixture.h"

#include <QFile>

namespace quenvolta
{

namespace
{

class StandardNamespaceTest : public ServerFixture
{
protected:
    StandardNamespaceTest() { m_server = MakeStandardNamespace(ServedVersion(u"3.3.1"_s)); }

    QList<WbemObjectPtr> Instances(const QString& className, const CancelCheck& cancel = {})
    {
        m_rows = {};
        CallContext context{m_server->Classes(), m_rows, cancel, {}, false};
        m_server->EnumerateInstances(className, context);
        return m_rows.instances;
    }
    WbemObjectPtr Object(const QString& path)
    {
        CallContext context{m_server->Classes(), m_rows, {}, {}, false};
        return m_server->GetObject(path, context);
    }
    static QString Host() { return QString::fromLocal8Bit(Run(u"hostname"_s, {})).trimmed(); }

    /// The lines that the system's own program lists, as the name and the identifier of its number.
    static QStringList SystemAccounts(const QString& database, const QString& prefix)
    {
        QStringList accounts;
        for (const QByteArray& line : Run(u"getent"_s, {database}).split('\n')) {
            const QByteArrayList fields = line.split(':');
            if (fields.size() > 2)
                accounts.append(QString::fromUtf8(fields[0]) + u' ' + prefix + QString::fromUtf8(fields[2]));
        }
        return accounts;
    }
    QStringList Accounts(const QString& className)
    {
        QStringList accounts;
        for (const WbemObjectPtr& each : Instances(className))
            accounts.append(Text(each, u"Name"_s) + u' ' + Text(each, u"SID"_s));
        return accounts;
    }
};

TEST_F(StandardNamespaceTest, UsersAndGroupsAreTheSystemsOwn)
{
    EXPECT_EQ(Accounts(u"Win32_UserAccount"_s), SystemAccounts(u"passwd"_s, u"S-1-22-1-"_s));
    EXPECT_EQ(Accounts(u"Win32_Group"_s), SystemAccounts(u"group"_s, u"S-1-22-2-"_s));

    const QString path = u"Win32_UserAccount.Domain=\"%1\",Name=\"%2\""_s;
    const WbemObjectPtr root = Object(path.arg(Host().toUpper(), u"root"_s));
    EXPECT_EQ(Text(root, u"SID"_s), u"S-1-22-1-0"_s);
    EXPECT_EQ(Text(root, u"Domain"_s), Host());
    EXPECT_EQ(Text(root, u"FullName"_s), u"root"_s);
    EXPECT_EQ(Text(Object(u"Win32_Group.Domain=\"%1\",Name=\"root\""_s.arg(Host())), u"SID"_s), u"S-1-22-2-0"_s);
    for (const QString& missing : {path.arg(u"elsewhere"_s, u"root"_s), path.arg(Host(), u"no-such-user"_s),
                                   path.arg(Host(), QString()), path.arg(Host(), u"root"_s + QChar(u'\0') + u"x"_s)})
        EXPECT_THROW(Object(missing), ProviderError) << missing.toStdString();
}

TEST_F(StandardNamespaceTest, AnEnumerationThatIsStoppedEndsAndTheNextBeginsAnew)
{
    int rows = 0;
    EXPECT_THROW(Instances(u"Win32_UserAccount"_s, [&rows] { return ++rows > 2; }), ProviderError);
    EXPECT_EQ(m_rows.instances.size(), 2);
    EXPECT_EQ(Accounts(u"Win32_UserAccount"_s).size(), SystemAccounts(u"passwd"_s, {}).size());
}

// The kernel's own tables, and not the calls that the class itself makes.
TEST_F(StandardNamespaceTest, EveryInterfaceIsToldWithTheAddressesThatOthersReach)
{
    QStringList names;
    QStringList addresses;
    for (const WbemObjectPtr& each : Instances(u"Win32_NetworkAdapterConfiguration"_s)) {
        names.append(Text(each, u"Description"_s));
        const Variant told = Value(each, u"IPAddress"_s);
        if (const QStringList* list = std::get_if<QStringList>(&told)) {
            EXPECT_FALSE(list->isEmpty());
            addresses += *list;
        } else {
            EXPECT_TRUE(IsNullVariant(told));
        }
        const QString path = u"Win32_NetworkAdapterConfiguration.Index=\"%1\""_s.arg(Text(each, u"Index"_s));
        EXPECT_EQ(Text(Object(path), u"Description"_s), names.back());
        QFile index(u"/sys/class/net/%1/ifindex"_s.arg(names.back()));
        ASSERT_TRUE(index.open(QIODevice::ReadOnly));
        EXPECT_EQ(QString::fromLatin1(index.readAll()).trimmed(), Text(each, u"Index"_s));
    }
    QStringList known = QDir(u"/sys/class/net"_s).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    known.removeIf([](const QString& name) { return !QFile::exists(u"/sys/class/net/%1/ifindex"_s.arg(name)); });
    names.sort();
    known.sort();
    EXPECT_EQ(names, known);
    EXPECT_FALSE(addresses.contains(u"127.0.0.1"_s) || addresses.contains(u"::1"_s));
    QFile table(u"/proc/net/fib_trie"_s);
    ASSERT_TRUE(table.open(QIODevice::ReadOnly));
    const QString local = QString::fromLatin1(table.readAll());
    for (const QString& address : addresses) {
        EXPECT_TRUE(address.contains(u':') || local.contains("|-- "_L1 + address + u'\n')) << address.toStdString();
    }
    EXPECT_THROW(Object(u"Win32_NetworkAdapterConfiguration.Index=\"0\""_s), ProviderError);
    EXPECT_THROW(Object(u"Win32_NetworkAdapterConfiguration.Index=\"x\""_s), ProviderError);
}

} // namespace

} // namespace quenvolta
