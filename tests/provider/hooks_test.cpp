#include "foundation/registry_accessor.h"
#include "provider/hooks/hook_kind.h"
#include "provider/hooks/repository_hooks.h"
#include "provider/server_namespaces.h"
#include "svn_fixture.h"

#include <sys/stat.h>

namespace quenvolta
{

namespace
{

constexpr qint32 kPostCommit = 0;
constexpr qint32 kPreCommit = 4;

class HooksTest : public SvnFixture
{
protected:
    void SetUp() override
    {
        SvnFixture::SetUp();
        MakeRepository(u"a"_s);
    }

    RepositoryHooks Hooks() const { return RepositoryHooks(m_root, PathOf(u"a"_s), u"a"_s); }
    QString PathTo(const QString& hook) const { return PathOf(u"a"_s) + u"/hooks/"_s + hook; }

    static QByteArray ContentOf(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QStringList HookFolder() const
    {
        return QDir(PathOf(u"a"_s) + u"/hooks"_s)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    HRESULT WriteCode(const QString& text) const
    {
        return ErrorOf([&] { Hooks().Write(kPreCommit, text); }).Code();
    }
    HRESULT ReadCode() const
    {
        return ErrorOf([&] { Hooks().Read(kPreCommit); }).Code();
    }
};

TEST_F(HooksTest, AConfiguredHookStopsARealCommit)
{
    const mode_t before = ::umask(0077); // what others may do doesn't depend on it
    Hooks().Write(kPreCommit, u"#!/bin/sh\nrepository=\"$1\"\necho \"kept out of $repository\" >&2\nexit 1\n"_s);
    ::umask(before);
    const auto commit = [this] {
        QProcess svn;
        svn.start(u"svn"_s, {u"mkdir"_s, u"-m"_s, u"m"_s, UrlOf(u"a"_s) + u"/trunk"_s});
        EXPECT_TRUE(svn.waitForFinished());
        return std::pair(svn.exitCode(), QString::fromUtf8(svn.readAllStandardError()));
    };
    const auto [status, words] = commit();
    EXPECT_NE(status, 0);
    EXPECT_TRUE(words.contains(u"kept out of "_s + PathOf(u"a"_s))) << words.toStdString();
    EXPECT_EQ(m_store.Read(u"a"_s).youngestRevision, 0U);
    Hooks().Delete(kPreCommit);
    EXPECT_EQ(commit().first, 0);
    EXPECT_EQ(m_store.Read(u"a"_s).youngestRevision, 1U);
}

TEST_F(HooksTest, EachKindIsItsOwnFileAndTemplatesStay)
{
    const QStringList templates = HookFolder();
    for (qint32 kind = 0; kind < 9; ++kind) {
        EXPECT_EQ(Hooks().Read(kind), std::nullopt);
        Hooks().Delete(kind); // none there is no failure
        Hooks().Write(kind, QString::number(kind));
    }
    QStringList expected = templates;
    for (const char* name : kHookNames) {
        expected << QString::fromLatin1(name);
        EXPECT_TRUE(templates.contains(QString::fromLatin1(name) + u".tmpl"_s)) << name; // Subversion's own names
    }
    expected.sort();
    QStringList present = HookFolder();
    present.sort();
    EXPECT_EQ(present, expected);
    EXPECT_EQ(ContentOf(PathTo(u"start-commit"_s)), "8");
    for (qint32 kind = 0; kind < 9; ++kind) {
        EXPECT_EQ(Hooks().Read(kind), QString::number(kind));
        Hooks().Delete(kind);
    }
    EXPECT_EQ(HookFolder(), templates);
    for (const qint32 kind : {-1, 9, INT32_MAX, INT32_MIN})
        EXPECT_EQ(ErrorOf([&] { Hooks().Read(kind); }).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_TRUE(HiddenNames().isEmpty());
}

TEST_F(HooksTest, TextsComeBackAsTheyWere)
{
    const QStringList scripts{QString(),
                              u"no line end"_s,
                              u"#!/bin/sh\r\nexit 0\r\n"_s,
                              u"\uFEFF#!/bin/sh\n"_s,
                              u"mixed\r\n\n\r\x7f\t\u00fc\u4e2d\U0001F600\u2028"_s,
                              QString(RepositoryHooks::kLongestScript, u'x')};
    for (const QString& script : scripts) {
        Hooks().Write(kPreCommit, script);
        EXPECT_EQ(ContentOf(PathTo(u"pre-commit"_s)), script.toUtf8());
        EXPECT_EQ(Hooks().Read(kPreCommit), script);
    }
    EXPECT_EQ(WriteCode(QString(RepositoryHooks::kLongestScript, u'\u00fc')), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(WriteCode(u"a"_s + QChar(u'\0')), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(WriteCode(QString(QChar(0xD800))), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(Hooks().Read(kPreCommit), scripts.last());

    // A script in Latin-1 keeps its bytes as long as it can.
    Write(PathTo(u"pre-commit"_s), "# pr\xfc\x66t\n");
    EXPECT_EQ(Hooks().Read(kPreCommit), u"# prüft\n"_s);
    Hooks().Write(kPreCommit, u"# prüft\nexit 0\n"_s);
    EXPECT_EQ(ContentOf(PathTo(u"pre-commit"_s)), "# pr\xfc\x66t\nexit 0\n");
    Hooks().Write(kPreCommit, u"# prüft 中\n"_s);
    EXPECT_EQ(ContentOf(PathTo(u"pre-commit"_s)), u"# prüft 中\n"_s.toUtf8());

    // What is no script isn't shown as one.
    Write(PathTo(u"pre-commit"_s), QByteArray("\x7f"
                                              "ELF\0\1",
                                              6));
    EXPECT_EQ(ReadCode(), WBEM_E_INVALID_PARAMETER);
    Write(PathTo(u"pre-commit"_s), QByteArray(RepositoryHooks::kLongestScript + 1, 'x'));
    EXPECT_EQ(ReadCode(), WBEM_E_FAILED);
    Hooks().Write(kPreCommit, u"text"_s);
    EXPECT_EQ(Hooks().Read(kPreCommit), u"text"_s);
}

TEST_F(HooksTest, LinksAndOtherThingsInTheWayHarmNothingElse)
{
    const QString precious = m_outside + u"/precious"_s;
    QFile::link(precious, PathTo(u"pre-commit"_s));
    EXPECT_EQ(Hooks().Read(kPreCommit), u"keep"_s); // Subversion would run it, too
    Hooks().Write(kPreCommit, u"mine"_s);
    EXPECT_FALSE(QFileInfo(PathTo(u"pre-commit"_s)).isSymLink());
    EXPECT_EQ(ContentOf(precious), "keep");
    QFile::link(precious, PathTo(u"post-commit"_s));
    Hooks().Delete(kPostCommit);
    EXPECT_EQ(ContentOf(precious), "keep");
    QFile::link(m_outside + u"/nowhere"_s, PathTo(u"post-commit"_s));
    EXPECT_EQ(Hooks().Read(kPostCommit), QString());
    Hooks().Write(kPostCommit, u"text"_s);
    EXPECT_FALSE(QFile::exists(m_outside + u"/nowhere"_s));

    QFile::remove(PathTo(u"pre-commit"_s));
    ASSERT_EQ(::mkfifo(PathTo(u"pre-commit"_s).toUtf8().constData(), S_IRUSR | S_IWUSR), 0);
    EXPECT_EQ(Hooks().Read(kPreCommit), std::nullopt);
    Hooks().Delete(kPreCommit);
    ASSERT_TRUE(QDir().mkpath(PathTo(u"pre-commit/inside"_s)));
    EXPECT_EQ(Hooks().Read(kPreCommit), std::nullopt);
    EXPECT_EQ(WriteCode(u"x"_s), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf([&] { Hooks().Delete(kPreCommit); }).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_TRUE(QFile::exists(PathTo(u"pre-commit/inside"_s)));

    // A folder that several repositories may share is read and never changed; a missing one is made.
    const QString shared = m_outside + u"/shared"_s;
    ASSERT_TRUE(QFile::rename(PathOf(u"a"_s) + u"/hooks"_s, shared));
    EXPECT_EQ(Hooks().Read(kPostCommit), std::nullopt);
    Hooks().Delete(kPostCommit);
    ASSERT_TRUE(QFile::link(shared, PathOf(u"a"_s) + u"/hooks"_s));
    EXPECT_EQ(Hooks().Read(kPostCommit), u"text"_s);
    EXPECT_EQ(WriteCode(u"x"_s), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf([&] { Hooks().Delete(kPostCommit); }).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(ContentOf(shared + u"/post-commit"_s), "text");
    QFile::remove(PathOf(u"a"_s) + u"/hooks"_s);
    Hooks().Write(kPostCommit, u"again"_s);
    EXPECT_EQ(Hooks().Read(kPostCommit), u"again"_s);
    EXPECT_TRUE(HiddenNames().isEmpty());
}

TEST_F(HooksTest, TheMethodsReachTheRepositoryTheyAreCalledOn)
{
    class NoRows final : public RowSink
    {
    public:
        void AddInstance(const InstanceRow&) override {}
        void AddElement(const QString&, const InstanceRow&) override {}
    } rows;
    DataFolder data(m_temporary.path() + u"/data"_s);
    RegistryAccessor(data.Settings(), RegistryAccessor::kServerKey.toString()).SetRepositoriesRoot(m_root);
    const auto server = MakeServerNamespace(data, ServedVersion());
    const auto call = [&](const QString& repository, const QString& method, const QString& text = {}) {
        const MethodDefinition* definition = server->Classes().Find(u"Quenvolta_Repository"_s)->FindMethod(method);
        const auto in = std::make_shared<WbemObject>(definition->in);
        in->Put(u"Kind"_s, kPreCommit);
        if (!text.isNull())
            in->Put(u"Hook"_s, text);
        CallContext context{server->Classes(), rows, {}, QUuid::createUuid(), false};
        return server->ExecMethod(u"Quenvolta_Repository.Name=\""_s + repository + u'"', method, in, context);
    };
    const auto hook = [&] {
        const WbemObjectPtr out = call(u"a"_s, u"GetHook"_s);
        Variant text;
        Variant configured;
        out->Get(u"Hook"_s, &text, nullptr);
        out->Get(u"ReturnValue"_s, &configured, nullptr);
        return std::pair(text, configured);
    };
    EXPECT_EQ(hook(), std::pair(Variant(QString()), Variant(false)));
    call(u"a"_s, u"SetHook"_s, u"#!/bin/sh\n"_s);
    EXPECT_EQ(hook(), std::pair(Variant(u"#!/bin/sh\n"_s), Variant(true)));
    EXPECT_TRUE(QFileInfo(PathTo(u"pre-commit"_s)).isExecutable());
    call(u"a"_s, u"DeleteHook"_s);
    EXPECT_EQ(hook().second, Variant(false));
    EXPECT_EQ(ErrorOf([&] { call(u"a"_s, u"SetHook"_s); }).Code(), WBEM_E_INVALID_METHOD_PARAMETERS);
    for (const QString& missing : {u"b"_s, u"../outside"_s})
        EXPECT_NE(ErrorOf([&] { call(missing, u"SetHook"_s, u"x"_s); }).Code(), S_OK);
}

} // namespace

} // namespace quenvolta
