#include "platform/mmc/clipboard_format.h"
#include "platform/registry/registry.h"
#include "snapin/class_ids.h"
#include "snapin/extension_items.h"
#include "snapin/mmc_extension_data.h"
#include "snapin/registration.h"
#include "snapin_test.h"

#include <QTemporaryDir>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct ParentObject : IDataObject {
    HRESULT GetData(const QString& format, QByteArray* data) const override
    {
        if (!formats.contains(format))
            return DV_E_FORMATETC;
        *data = formats[format];
        return S_OK;
    }
    QMap<QString, QByteArray> formats;
};

std::shared_ptr<ParentObject> NodeOf(const QUuid& type, const QString& computer)
{
    auto node = std::make_shared<ParentObject>();
    node->formats = {{CCF_NODETYPE, ClipboardGuid(type)}, {MMC_SNAPIN_MACHINE_NAME, ClipboardText(computer)}};
    return node;
}

class ExtensionTest : public test::SnapInTest
{
protected:
    ExtensionTest() { console.LoadBelowAnother(extension); }

    HRESULT Expand(const DataObjectPtr& parent)
    {
        return extension.Notify(parent, {.type = MMC_NOTIFY_TYPE::MMCN_EXPAND, .on = true, .scopeItem = 1});
    }

    CMMCExtensionData extension{Services()};
};

const QUuid kComputerNode = CCompManagerExtensionItem::kNodeType.id;
const QUuid kServerNode = CServerManagerExtensionItem::kNodeType.id;

} // namespace

TEST_F(ExtensionTest, TheTreeHangsBelowTheComputersOfBothTools)
{
    server.data.repositories = {{u"web"_s}};
    for (const auto& [type, computer] :
         {std::pair{kComputerNode, u"SRV07"_s}, {kServerNode, u""_s}, {kServerNode, QString(256, u'x')}}) {
        EXPECT_EQ(Expand(NodeOf(type, computer)), S_OK);
        EXPECT_EQ(extension.Model().ComputerName(), computer);
        EXPECT_EQ(console.Children({}).last(), u"Quenvolta Server"); // the computer is named by its own node
    }
    console.Expand(u"Quenvolta Server"_s);
    EXPECT_EQ(console.Children(u"Quenvolta Server"_s), (QStringList{u"Repositories"_s, u"Users"_s, u"Groups"_s}));
    QByteArray preloads;
    console.Object(u"Quenvolta Server"_s)->GetData(CCF_SNAPIN_PRELOADS, &preloads);
    EXPECT_EQ(preloads, QByteArray(4, '\0'));
    EXPECT_EQ(console.Text(u"Quenvolta Server"_s, 1), u"Extension Snap-in");
    EXPECT_EQ(console.Text(u"Quenvolta Server"_s, 2), u"Configures Quenvolta Server.");
}

TEST_F(ExtensionTest, OtherNodesAreRefused)
{
    const QList<std::shared_ptr<ParentObject>> broken{
        std::make_shared<ParentObject>(),
        NodeOf(QUuid::createUuid(), u"srv"_s),
        NodeOf(kComputerNode, QString(257, u'x')),
    };
    for (const auto& parent : broken)
        EXPECT_TRUE(Failed(Expand(parent)));
    const auto nameless = NodeOf(kComputerNode, {});
    nameless->formats.remove(MMC_SNAPIN_MACHINE_NAME);
    EXPECT_EQ(Expand(nameless), DV_E_FORMATETC);
    const auto unterminated = NodeOf(kComputerNode, {});
    unterminated->formats[MMC_SNAPIN_MACHINE_NAME] = QByteArray("s\0r\0", 4);
    EXPECT_EQ(Expand(unterminated), E_UNEXPECTED);
    EXPECT_EQ(console.insertions, 0);
    EXPECT_EQ(extension.Notify(NodeOf(kComputerNode, {}), {.type = MMC_NOTIFY_TYPE::MMCN_REFRESH}), E_NOTIMPL);
}

TEST(RegistrationTest, EntriesComeAndGo)
{
    QTemporaryDir folder;
    Registry registry(u"HKEY_LOCAL_MACHINE"_s, folder.filePath(u"registry.db"_s));
    const auto text = [&](const QString& key, const QString& name = {}) {
        RegistryValue value;
        return registry.QueryValue(key, name, &value) == ERROR_SUCCESS ? value.ToString().value_or(u"?"_s) : u"-"_s;
    };
    const QString mmc = u"Software\\Microsoft\\MMC\\"_s;
    const QString classes = u"Software\\Classes\\"_s;
    const QString standalone = u"{08B017E8-47AD-4D1B-A928-94FFD77E9950}"_s;
    const QString extension = u"{5868BB8C-E3E5-4111-AB2D-B83FE00FAFFE}"_s;
    const QString about = u"{2FC11162-83EE-47ED-87DA-490D7402230C}"_s;
    EXPECT_EQ(kExtensionClassId.toString().toUpper(), extension);
    EXPECT_EQ(kAboutClassId.toString().toUpper(), about);

    for (int time = 0; time < 2; ++time) {
        RegisterSnapIn(registry, u"/opt/manager"_s);
        EXPECT_EQ(text(mmc + u"Snapins\\"_s + standalone, u"NameString"_s), u"Quenvolta Server Manager");
        EXPECT_EQ(text(mmc + u"Snapins\\"_s + extension, u"About"_s), about);
        EXPECT_EQ(registry.FindKey(mmc + u"Snapins\\"_s + standalone + u"\\Standalone"_s), ERROR_SUCCESS);
        for (const QUuid& node : {kComputerNode, kServerNode}) {
            const QString key = mmc + u"NodeTypes\\"_s + node.toString().toUpper() + u"\\Extensions\\Namespace"_s;
            EXPECT_EQ(text(key, extension), u"Quenvolta Server Manager Extension");
        }
        EXPECT_EQ(text(classes + u"CLSID\\"_s + about + u"\\InprocServer32"_s), u"/opt/manager");
        EXPECT_EQ(text(classes + u"CLSID\\"_s + about + u"\\InprocServer32"_s, u"ThreadingModel"_s), u"both");
        EXPECT_EQ(text(classes + u"Quenvolta.Server.Manager.MMC\\CurVer"_s), u"Quenvolta.Server.Manager.MMC.1");

        UnregisterSnapIn(registry);
        for (const QString& key :
             {mmc + u"Snapins\\"_s + standalone, mmc + u"Snapins\\"_s + extension,
              mmc + u"Snapins\\"_s + standalone + u"\\Standalone"_s, classes + u"CLSID\\"_s + extension,
              classes + u"CLSID\\"_s + extension + u"\\InprocServer32"_s, classes + u"CLSID\\"_s + about})
            EXPECT_EQ(registry.FindKey(key), ERROR_FILE_NOT_FOUND) << key.toStdString();
        EXPECT_EQ(registry.FindKey(classes + u"CLSID\\"_s + standalone), ERROR_SUCCESS); // shared
    }
    EXPECT_NO_THROW(UnregisterSnapIn(registry));
}

} // namespace quenvolta
