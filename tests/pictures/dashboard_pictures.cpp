// Takes the pictures of docs/pictures/dashboard: the window on servers in every state that the dashboard knows, in
// light and in dark colours.
//
//     build/dev/bin/dashboard_pictures docs/pictures/dashboard
#include "host/console_window.h"
#include "host/dark_palette.h"
#include "host/picture.h"
#include "host/printed_messages.h"
#include "host/web_browser_loader.h"
#include "model/file_downloader.h"
#include "snapin/mmc_extension_about.h"
#include "snapin/mmc_standalone_data.h"
#include "support/memory_preferences.h"
#include "support/recorded_shell.h"
#include "support/stand_in_server.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QStyleFactory>
#include <QTemporaryFile>

#include <cstdio>

using namespace quenvolta;
using namespace Qt::StringLiterals;

namespace
{

constexpr QSize kSize(900, 600);

/// An update service that answers at once.
class PromptDownloader final : public IcFileDownloader
{
public:
    PromptDownloader(IcFileDownloaderEvents& events, QByteArray answer)
        : m_events(events)
        , m_answer(std::move(answer))
    {
    }
    void Download(const QString&) override
    {
        QTemporaryFile file;
        if (m_answer.isEmpty() || !file.open() || file.write(m_answer) < 0 || !file.flush())
            m_events.OnDownloadFailed(MakeHResult(0x800C0005)); // the server can't be found
        else
            m_events.OnDownloadComplete(file.fileName());
    }

private:
    IcFileDownloaderEvents& m_events;
    QByteArray m_answer;
};

/// What one picture shows.
struct Scene {
    test::StandInServer server;
    test::MemoryPreferences preferences;
    QString computer = {};
    /// Absent: nobody is asked for updates.
    std::optional<QByteArray> updateAnswer = {};
    bool withoutPage = false;

    explicit Scene(const QString& version)
        : server(version)
    {
        server.data.repositories = {{u"Firmware"_s}, {u"Handbook"_s}, {u"Website"_s}};
        server.data.users = {u"ann"_s, u"bob"_s, u"eve"_s};
        server.data.groups = {{.name = u"Writers"_s}};
    }
    void FailToConnect(HRESULT code, const QString& words)
    {
        server.Fail(test::Operation::Connect, {}, {code, CreateErrorInfo(words)}, -1);
    }
    void FailToList(const QString& className, const QString& words)
    {
        server.Fail(test::Operation::EnumerateInstances, className, {WBEM_E_FAILED, server.ExtendedError(words)}, -1);
    }
};

struct Picture {
    QString name;
    std::function<void(Scene&)> prepare;
    QString version = u"3.3.1"_s;
};

const QList<Picture>& Pictures()
{
    static const QList<Picture> kPictures{
        {u"local"_s, [](Scene&) {}},
        {u"remote"_s, [](Scene& s) { s.computer = u"srv1"_s; }},
        {u"older-server"_s, [](Scene& s) { s.computer = u"srv1"_s; }, u"2.7"_s},
        {u"services-stopped"_s,
         [](Scene& s) {
             s.server.data.service[u"ServiceState"_s] = 1U;
             s.server.data.qdfsService[u"ServiceState"_s] = 1U;
         }},
        {u"service-starting"_s, [](Scene& s) { s.server.data.service[u"ServiceState"_s] = 2U; }},
        {u"qdfs-disabled"_s,
         [](Scene& s) {
             s.server.data.qdfsService[u"ServiceState"_s] = 1U;
             s.server.data.qdfsService[u"StartMode"_s] = 4U;
         }},
        {u"windows-accounts"_s, [](Scene& s) { s.server.data.service[u"AuthType"_s] = 1U; }},
        {u"update-available"_s,
         [](Scene& s) {
             s.updateAnswer = "<Response><Update><Version>3.4.0</Version><Date>133000000000000000</Date>"
                              "<LearnMore>/more</LearnMore><Download>/get</Download></Update></Response>";
         }},
        {u"update-check-failed"_s, [](Scene& s) { s.updateAnswer = QByteArray(); }},
        {u"update-check-disabled"_s, [](Scene& s) { s.preferences.updateCheckDisabled = true; }},
        {u"accounts-unreadable"_s,
         [](Scene& s) { s.FailToList(u"Quenvolta_User"_s, u"The file 'users' can't be read: permission denied."_s); }},
        {u"repositories-unreadable"_s,
         [](Scene& s) {
             s.FailToList(u"Quenvolta_Repository"_s, u"The folder '/srv/repositories' can't be read: not found."_s);
         }},
        {u"error"_s,
         [](Scene& s) {
             s.FailToConnect(WBEM_E_FAILED,
                             u"The folder '/srv/quenvolta/repositories' can't be opened: it is not a folder."_s);
         }},
        {u"error-unreachable"_s,
         [](Scene& s) {
             s.computer = u"srv1"_s;
             s.FailToConnect(RPC_S_SERVER_UNAVAILABLE, u"The computer srv1 can't be reached.\n"
                                                       "ssh: connect to host srv1 port 22: Connection refused"_s);
         }},
        {u"error-access-denied"_s,
         [](Scene& s) {
             s.computer = u"srv1"_s;
             s.FailToConnect(E_ACCESSDENIED, u"The connection to srv1 was refused.\n"
                                             "admin@srv1: Permission denied (publickey,password)."_s);
         }},
        {u"error-broken-management"_s,
         [](Scene& s) {
             s.computer = u"srv1"_s;
             s.FailToConnect(WBEM_E_PROVIDER_LOAD_FAILURE,
                             u"The management provider on srv1 ended before it answered.\n"
                             "quenvolta-provider: error while loading shared libraries: libsvn_repos-1.so.1: "
                             "cannot open shared object file: No such file or directory"_s);
         }},
        {u"error-not-installed"_s,
         [](Scene& s) {
             s.computer = u"srv1"_s;
             s.server.hasNamespace = false;
         }},
        {u"without-web-view"_s, [](Scene& s) { s.withoutPage = true; }},
    };
    return kPictures;
}

void Take(const Picture& picture, const QString& fileName)
{
    Scene scene(picture.version);
    picture.prepare(scene);
    // As on a computer without the web view's parts.
    if (scene.withoutPage)
        qputenv("QUENVOLTA_DASHBOARD", "plain");
    PrintedMessages messages;
    const test::RecordedShell shell;
    const CMMCExtensionAbout about;
    SnapInServices services{scene.server.LocatorFactory(), scene.preferences, messages, shell};
    if (scene.updateAnswer) {
        services.updateService = {u"http://updates.example.org"_s, [&](IcFileDownloaderEvents& events) {
                                      return std::make_unique<PromptDownloader>(events, *scene.updateAnswer);
                                  }};
    }
    const QStringList arguments =
        scene.computer.isEmpty() ? QStringList() : QStringList{u"/computer="_s + scene.computer};
    ConsoleWindow window(about, messages, nullptr);
    qunsetenv("QUENVOLTA_DASHBOARD");
    window.show();
    window.Load(std::make_unique<CMMCStandaloneData>(services, arguments));
    WritePicture(window, kSize, fileName);
    std::printf("%s\n", qPrintable(fileName));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(u"default.warning=false"_s); // what this platform can't do
    const QApplication application(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "usage: dashboard_pictures FOLDER\n");
        return EXIT_FAILURE;
    }
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    for (const Picture& picture : Pictures())
        Take(picture, folder.filePath(picture.name + ".png"_L1));
    UseDarkPalette();
    for (const Picture& picture : Pictures())
        Take(picture, folder.filePath(picture.name + "-dark.png"_L1));
    return EXIT_SUCCESS;
}
