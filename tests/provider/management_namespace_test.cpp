#include "foundation/registry_accessor.h"
#include "platform/wbem/class_table.h"
#include "provider/namespace_fixture.h"
#include "provider/unbuilt_methods.h"

#include <QDir>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

class ManagementNamespaceTest : public NamespaceFixture
{
protected:
    QStringList RepositoryNames() { return Names(u"Quenvolta_Repository"_s); }
};

TEST_F(ManagementNamespaceTest, EveryMethodOfTheContractIsCarriedOutOrNamedAsUnbuilt)
{
    for (const QString& className : server->Classes().ClassNames()) {
        for (const MethodDefinition& method : server->Classes().Find(className)->methods) {
            const QString target = method.isStatic || !server->Classes().Find(className)->Keys().size()
                                       ? className
                                       : className + ".Name=\"x\""_L1;
            const bool unbuilt = IsUnbuilt(className, method.name);
            EXPECT_EQ(unbuilt, !server->HasHandler(className, method.name))
                << className.toStdString() << "." << method.name.toStdString();
            if (unbuilt && (method.isStatic || className != "Quenvolta_SecurityDescriptor"_L1)) {
                EXPECT_EQ(CodeOf(target, method.name, {}), WBEM_E_NOT_SUPPORTED);
            }
        }
    }
}

TEST_F(ManagementNamespaceTest, WhatTheTableDoesNotHoldIsRefused)
{
    const QString repository = u"Quenvolta_Repository"_s;
    EXPECT_EQ(CodeOf(u"Quenvolta_Nothing"_s, u"Create"_s, {}), WBEM_E_INVALID_CLASS);
    EXPECT_EQ(CodeOf(repository, u"Explode"_s, {}), WBEM_E_INVALID_METHOD);
    EXPECT_EQ(CodeOf(repository, u"Create"_s, {{u"Name"_s, u"a"_s}, {u"Colour"_s, u"red"_s}}),
              WBEM_E_INVALID_METHOD_PARAMETERS);
    EXPECT_EQ(CodeOf(repository, u"Create"_s, {{u"Name"_s, 7}}), WBEM_E_TYPE_MISMATCH);
    EXPECT_EQ(CodeOf(repository, u"Create"_s, {}), WBEM_E_INVALID_METHOD_PARAMETERS);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository.Name=\"a\""_s, u"Create"_s, {{u"Name"_s, u"b"_s}}),
              WBEM_E_INVALID_METHOD_PARAMETERS);
    EXPECT_EQ(CodeOf(repository, u"GetChildren"_s, {{u"Path"_s, u"/"_s}}), WBEM_E_INVALID_METHOD_PARAMETERS);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository.Title=\"a\""_s, u"Upgrade"_s, {}), WBEM_E_INVALID_OBJECT_PATH);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository.Name=\"a"_s, u"Upgrade"_s, {}), WBEM_E_INVALID_OBJECT_PATH);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository=@"_s, u"Upgrade"_s, {}), WBEM_E_INVALID_OBJECT_PATH);
    EXPECT_TRUE(RepositoryNames().isEmpty());

    const auto older = MakeServerNamespace(data, ServedVersion(u"2.5"_s));
    CallContext context{older->Classes(), rows, {}, {}, false};
    EXPECT_THROW(older->ExecMethod(repository, u"Rename"_s, nullptr, context), ProviderError);
    EXPECT_FALSE(older->Classes().Find(u"Quenvolta_QdfsService"_s));
}

TEST_F(ManagementNamespaceTest, HostileNamesAndPathsAreRefusedAndTouchNothing)
{
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, u"good"_s}}), S_OK);
    const QString good = u"Quenvolta_Repository.Name=\"good\""_s;
    const auto listing = [this] {
        return QDir(folder.path() + "/data/repositories"_L1)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    };
    const QStringList before = listing();
    const QStringList names{QString(),
                            u"a/b"_s,
                            u".."_s,
                            u".hidden"_s,
                            u"a\nb"_s,
                            u"a"_s + QChar(u'\0') + u"b"_s,
                            QString(10'000, u'x'),
                            u"../escape"_s};
    for (const QString& name : names) {
        const std::string shown = name.left(20).toStdString();
        EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, name}}), WBEM_E_INVALID_PARAMETER)
            << shown;
        EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Rename"_s, {{u"OldName"_s, u"good"_s}, {u"NewName"_s, name}}),
                  WBEM_E_INVALID_PARAMETER)
            << shown;
        EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Delete"_s, {{u"Name"_s, name}}), WBEM_E_INVALID_PARAMETER)
            << shown;
    }
    for (const QString& path : {u"/../x"_s, u"//x"_s, u"../x"_s, u"/a/./b"_s, u"/a\tb"_s, u"/a/"_s, QString()}) {
        EXPECT_EQ(CodeOf(good, u"CreateFolders"_s, {{u"Folders"_s, QStringList{path}}, {u"Message"_s, u"m"_s}}),
                  WBEM_E_INVALID_PARAMETER)
            << path.toStdString();
        EXPECT_EQ(CodeOf(good, u"GetChildren"_s, {{u"Path"_s, path}}), WBEM_E_INVALID_PARAMETER) << path.toStdString();
    }
    EXPECT_EQ(listing(), before);
    EXPECT_FALSE(QDir(folder.path()).exists(u"escape"_s));
}

TEST_F(ManagementNamespaceTest, FoldersAndEntriesReadBackWithTheirAddresses)
{
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, u"My Project"_s}}), S_OK);
    const QString path = u"Quenvolta_Repository.Name=\"My Project\""_s;
    ASSERT_EQ(CodeOf(path, u"CreateFolders"_s,
                     {{u"Folders"_s, QStringList{u"trunk"_s, u"/trunk/50% \u00e4"_s}}, {u"Message"_s, u"two"_s}}),
              S_OK);
    Exec(path, u"GetChildren"_s, {{u"Path"_s, u"/trunk"_s}});
    const QList<WbemObjectPtr> children = rows.elements.value(u"Children"_s);
    ASSERT_EQ(children.size(), 1);
    EXPECT_EQ(Text(children[0], u"Path"_s), u"/trunk/50% \u00e4"_s);
    EXPECT_EQ(Text(children[0], u"ParentPath"_s), u"/trunk"_s);
    EXPECT_TRUE(Text(children[0], u"URL"_s).endsWith(u"/svn/My%20Project/trunk/50%25%20%C3%A4"_s));

    CallContext context = Context();
    const WbemObjectPtr root =
        server->GetObject(u"Quenvolta_RepositoryEntry.RepositoryName=\"My Project\",Path=\"/\""_s, context);
    Variant parent;
    ASSERT_EQ(root->Get(u"ParentPath"_s, &parent, nullptr), S_OK);
    EXPECT_TRUE(IsNullVariant(parent));
}

TEST_F(ManagementNamespaceTest, NoFolderIsEverTakenForTheRepositories)
{
    RegistryAccessor settings(data.Settings(), RegistryAccessor::kServerKey.toString());
    for (const QString& root : {QString(), u"repositories"_s, u"."_s}) {
        settings.SetRepositoriesRoot(root);
        EXPECT_THROW(RepositoryNames(), ProviderError) << root.toStdString();
        EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, u"a"_s}}), WBEM_E_FAILED);
    }
}

TEST_F(ManagementNamespaceTest, ARepeatedRequestFindsItsWorkDone)
{
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, u"old"_s}}), S_OK);
    const QList<std::pair<QString, Variant>> rename{{u"OldName"_s, u"old"_s}, {u"NewName"_s, u"new"_s}};
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Rename"_s, rename), S_OK);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Rename"_s, rename), WBEM_E_NOT_FOUND);
    repeated = true;
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Rename"_s, rename), S_OK);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Delete"_s, {{u"Name"_s, u"old"_s}}), S_OK);
    EXPECT_EQ(RepositoryNames(), QStringList{u"new"_s});

    // The same request made the repository and the commit: there is no second one, and no failure.
    const QString path = u"Quenvolta_Repository.Name=\"fresh\""_s;
    const QList<std::pair<QString, Variant>> fresh{{u"Name"_s, u"fresh"_s}};
    const QList<std::pair<QString, Variant>> trunk{{u"Folders"_s, QStringList{u"/trunk"_s}}, {u"Message"_s, u"m"_s}};
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, fresh), S_OK);
        EXPECT_EQ(CodeOf(path, u"CreateFolders"_s, trunk), S_OK);
    }
    CallContext context = Context();
    Variant revisions;
    server->GetObject(path, context)->Get(u"TotalRevisions"_s, &revisions, nullptr);
    EXPECT_EQ(revisions, Variant(std::uint32_t{1}));
    // Another request of the same content is no repetition.
    request = QUuid::createUuid();
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, fresh), WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(CodeOf(path, u"CreateFolders"_s, trunk), WBEM_E_ALREADY_EXISTS);
}

TEST_F(ManagementNamespaceTest, TheServiceTellsItsSettingsAndSafeDefaults)
{
    CallContext context = Context();
    const WbemObjectPtr service = server->GetObject(u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s, context);
    Variant value;
    service->Get(u"ListenAllIPAddresses"_s, &value, nullptr);
    EXPECT_EQ(value, Variant(false));
    service->Get(u"ListenIPAddressesArray"_s, &value, nullptr);
    EXPECT_EQ(value, Variant(QStringList({u"127.0.0.1"_s, u"::1"_s})));
    service->Get(u"UnsecurePort"_s, &value, nullptr);
    EXPECT_EQ(value, Variant(std::uint32_t{8080}));
    RegistryAccessor settings(data.Settings(), RegistryAccessor::kServerKey.toString());
    settings.SetUseSsl(true);
    settings.SetServerName(u"svn.example.org"_s);
    settings.SetServerPort(true, 443);
    const WbemObjectPtr changed = server->GetObject(u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s, context);
    EXPECT_EQ(Text(changed, u"URL"_s), u"https://svn.example.org/svn/"_s);
    EXPECT_THROW(server->GetObject(u"Quenvolta_Service.Name=\"other\""_s, context), ProviderError);
}

} // namespace

} // namespace quenvolta
