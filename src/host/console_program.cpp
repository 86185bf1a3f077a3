#include "host/console_program.h"

#include "foundation/console_preferences.h"
#include "host/connection_watch.h"
#include "host/console_window.h"
#include "host/dark_palette.h"
#include "host/picture.h"
#include "host/printed_messages.h"
#include "host/snap_in_catalog.h"
#include "host/view_state.h"
#include "platform/channel/channel_pool.h"
#include "platform/registry/registry.h"
#include "snapin/mmc_extension_about.h"
#include "ui/message_boxes.h"
#include "updates/update_site.h"

#include <QApplication>
#include <QFileInfo>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// A person may be asked for a password meanwhile, and can give up.
constexpr auto kPatienceWithPerson = std::chrono::minutes(5);

/// The path of a program of ours; its name alone where it isn't beside this one.
QString OwnProgram(const QString& name)
{
    const QString beside = QApplication::applicationDirPath() + u'/' + name;
    return QFileInfo(beside).isExecutable() ? beside : name;
}

/// `watch` is null where no person looks at a window.
ChannelOptions ReadChannelOptions(ConnectionWatch* watch)
{
    ChannelOptions options;
    options.localProgram = OwnProgram(options.localProgram);
    options.sshProgram = qEnvironmentVariable("QUENVOLTA_SSH", options.sshProgram);
    if (watch == nullptr) {
        options.sshEnvironment.insert(u"SSH_ASKPASS_REQUIRE"_s, u"never"_s);
        return options;
    }
    if (!qEnvironmentVariableIsSet("SSH_ASKPASS"))
        options.sshEnvironment.insert(u"SSH_ASKPASS"_s, OwnProgram(u"quenvolta-askpass"_s));
    options.sshEnvironment.insert(u"SSH_ASKPASS_REQUIRE"_s, u"force"_s);
    options.remoteHelloTimeout = kPatienceWithPerson;
    options.isStillWanted = [watch](const QString& computer) { return watch->IsStillWanted(computer); };
    return options;
}

/// What a picture shows when nothing is named: the repositories, or why there are none.
QStringList DefaultItem(ConsoleWindow& window)
{
    if (window.Host().Tree().Root()->children.empty())
        return {};
    return {LoadString(StringId::kRepositoriesName)};
}

/// The console with what outlives its window.
class Console
{
public:
    explicit Console(const CommandLine& line)
        : m_line(line)
    {
    }

    SnapInCatalog CreateCatalog(IcMessages& messages)
    {
        const WbemLocatorFactory factory = [this](WbemLocatorPtr* locator) {
            *locator = m_channels->CreateLocator();
            return S_OK;
        };
        SnapInServices services{factory, m_preferences, messages};
        services.updateService = UpdateSite().Service();
        return {services, m_line.arguments, m_line.extend};
    }

    int OpenWindow()
    {
        ViewState state;
        CMessageBoxes messages;
        const SnapInCatalog catalog = CreateCatalog(messages);
        ConsoleWindow window(m_about, messages, &state);
        messages.SetParent(&window);
        m_watch.SetParent(&window);
        window.SetCatalog(catalog);
        if (m_line.consoleFile.isEmpty())
            window.LoadWhenPainted([&] { return catalog.CreateNew(); });
        else
            window.OpenWhenPainted(m_line.consoleFile);
        window.show();
        return QApplication::exec();
    }

    int RenderPicture()
    {
        PrintedMessages messages;
        ConsoleWindow window(m_about, messages, nullptr);
        window.setAttribute(Qt::WA_DontShowOnScreen);
        window.show();
        const SnapInCatalog catalog = CreateCatalog(messages);
        window.SetCatalog(catalog);
        if (m_line.consoleFile.isEmpty())
            window.Load(catalog.CreateNew());
        else
            window.OpenFile(m_line.consoleFile);
        try {
            ShowItemAt(window, m_line.pictureSelect.value_or(DefaultItem(window)));
            WritePicture(window, m_line.pictureSize, m_line.pictureFile);
        } catch (const Exception& exception) {
            messages.ShowError(exception);
            return EXIT_FAILURE;
        }
        return EXIT_SUCCESS;
    }

private:
    const CommandLine& m_line;
    Registry m_registry{u"HKEY_CURRENT_USER"_s, ConsolePreferences::DefaultFileName()};
    ConsolePreferences m_preferences{m_registry};
    ConnectionWatch m_watch;
    std::shared_ptr<ChannelPool> m_channels = std::make_shared<ChannelPool>(
        ReadChannelOptions(m_line.task == CommandLine::Task::OpenWindow ? &m_watch : nullptr));
    CMMCExtensionAbout m_about;
};

} // namespace

int RunConsole(const CommandLine& line)
{
    if (line.dark)
        UseDarkPalette();
    Console console(line);
    return line.task == CommandLine::Task::RenderPicture ? console.RenderPicture() : console.OpenWindow();
}

} // namespace quenvolta
