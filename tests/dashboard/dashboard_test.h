#pragma once

#include "dashboard/dashboard_status.h"
#include "host/dashboard_view.h"
#include "support/page_hands.h"
#include "support/recorded_messages.h"

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// The dashboard in the true web view.
class DashboardTest : public testing::Test, protected PageHands
{
protected:
    static constexpr int kPage = 209;

    explicit DashboardTest(WebBrowserSource source = &LoadWebBrowser)
        : PageHands(view)
        , view(messages, std::move(source))
    {
        view.resize(900, 700);
        status.server.isRead = true;
        status.server.httpServiceState = 4;
        status.server.qdfsService = ServiceStatus{.state = 1, .startMode = 4};
        status.server.settings.url = QStringLiteral("http://server/svn/");
        status.server.versions = {QStringLiteral("3.3.1"), QStringLiteral("1.14"), QStringLiteral("2.4")};
        for (std::size_t i = 0; i < kCommandLinkAddresses.size(); ++i)
            status.links.insert(static_cast<CommandLink>(i));
        view.SetLinkHandler([this](const QString& address) {
            followed.append(address);
            return true;
        });
    }

    /// Opens the page and waits until it shows the status.
    void Open()
    {
        view.show();
        view.ShowStatus(status);
        view.Open(kPage);
        ASSERT_TRUE(view.WaitUntilDrawn(std::chrono::seconds(30)));
        ASSERT_FALSE(view.IsPlain());
    }
    void Show()
    {
        view.ShowStatus(status);
        ASSERT_TRUE(view.WaitUntilDrawn(std::chrono::seconds(30)));
    }

    RecordedMessages messages;
    DashboardStatus status;
    QStringList followed;
    DashboardView view;
};

} // namespace quenvolta::test
