#include "ui/guidance.h"

#include "foundation/wmi_client_exception.h"
#include "ui/help_site.h"
#include "ui/string_table.h"
#include "ui/task_dialog.h"

#include <algorithm>
#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct Guidance {
    std::int32_t probableReason;
    int hint;
    QStringView page;
};

constexpr std::array kGuidance{
    Guidance{1, StringId::kHintServicesStarted, u"/go/2056/"},
    Guidance{2, StringId::kHintMasterServerName, u"/go/2057/"},
    Guidance{3, StringId::kHintMasterRepositoryName, u"/go/2058/"},
    Guidance{4, StringId::kHintReplicationPartners, u"/go/2059/"},
    Guidance{5, StringId::kHintServerInstance, u"/go/2075/"},
};

} // namespace

bool ShowGuidance(QWidget* parent, const WMIClientException& exception)
{
    const auto guidance = std::ranges::find(kGuidance, exception.ProbableReason(), &Guidance::probableReason);
    if (guidance == kGuidance.end())
        return false;
    CTaskDialog dialog(parent);
    dialog.SetMainInstruction(exception.Summary());
    dialog.SetContent(LoadString(guidance->hint).toHtmlEscaped() + u"<br><br>"_s +
                      LinkTo(HelpUrl(guidance->page.toString()), LoadString(StringId::kLearnMoreAboutError)));
    dialog.SetExpandedInformation(exception.Details());
    dialog.exec();
    return true;
}

} // namespace quenvolta
