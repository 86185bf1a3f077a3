#include "dashboard_test.h"
#include "support/qt_printers.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// The page in each of its states, with texts that are as long as they get.
class DashboardLayoutTest : public test::DashboardTest
{
protected:
    template <typename Look>
    void ForEachState(Look&& look)
    {
        const auto show = [&](const char* state) {
            SCOPED_TRACE(state);
            Show();
            look(state);
        };
        const QString name(300, u'W');
        const QString words = u"Cannot connect to the namespace: "_s + name + u"\n\t& <no> 'way'"_s;
        status.server.settings.url = u"https://server.example/"_s + name;
        show("disabled");
        status.server.qdfsService = ServiceStatus{.state = 5, .startMode = 2};
        status.server.settings.accessLogging = status.server.settings.operationalLogging = true;
        status.server.userCount = status.server.groupCount = status.server.repositoryCount = 1'000'000'000;
        status.update = {.status = UpdateCheckStatus::UpdateAvailable, .version = name};
        show("update");
        status.server.qdfsService.reset();
        status.server.accountsFailure = status.server.repositoriesFailure = words;
        status.update = {.status = UpdateCheckStatus::Failed, .errorText = words};
        show("failures");
        status.server.settings.windowsAuthentication = true;
        status.updateCheckDisabled = true;
        show("windows authentication");
        status.server.isRead = false;
        status.server.errorText = words;
        for (int error = 1; error <= 5; ++error) {
            status.server.error = static_cast<StatusError>(error);
            show(("error " + std::to_string(error)).c_str());
        }
    }
};

/// What the validator says against a page; empty for a valid one.
QString FaultsOf(const QString& page)
{
    QProcess tidy;
    tidy.start(u"tidy"_s, {u"-quiet"_s, u"-errors"_s, u"-utf8"_s, u"--drop-empty-elements"_s, u"no"_s});
    tidy.write(page.toUtf8());
    tidy.closeWriteChannel();
    if (!tidy.waitForFinished())
        return tidy.errorString();
    return QString::fromUtf8(tidy.readAllStandardError()) +
           (tidy.exitCode() == 0 ? QString() : u"exit status %1"_s.arg(tidy.exitCode()));
}

} // namespace

TEST_F(DashboardLayoutTest, EachStateIsValidHtml)
{
    EXPECT_NE(FaultsOf(u"<p>no page</i>"_s), QString());
    Open();
    QFile file(u":/dashboard/209"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(FaultsOf(QString::fromUtf8(file.readAll())), QString());
    ForEachState([this](const char*) {
        EXPECT_EQ(FaultsOf(Ask(u"new XMLSerializer().serializeToString(document.doctype) + '\\n' +"
                               "document.documentElement.outerHTML"_s)),
                  QString());
    });
}

// Run once more with each pixel doubled.
TEST_F(DashboardLayoutTest, EachStateFitsIntoEachWidth)
{
    Open();
    const int scale = qEnvironmentVariableIntValue("QT_SCALE_FACTOR");
    EXPECT_EQ(Ask(u"window.devicePixelRatio"_s), QString::number(std::max(scale, 1)));
    ForEachState([this](const char*) {
        for (const int width : {320, 500, 800, 1200, 2000}) {
            view.resize(width, 700);
            EXPECT_TRUE(WaitFor(u"window.innerWidth === %1"_s.arg(width))) << width;
            EXPECT_EQ(Ask(u"[document.documentElement, ...document.querySelectorAll('body *')].filter("
                          "e => e.scrollWidth > e.clientWidth && e.clientWidth > 0 ||"
                          "e.getBoundingClientRect().right > document.documentElement.clientWidth)"
                          ".map(e => e.outerHTML.substring(0, 80)).join('|')"_s),
                      QString())
                << width;
        }
    });
}

} // namespace quenvolta
