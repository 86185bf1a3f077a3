#include "repositories/consistency_check.h"

#include "async/activity_kind.h"
#include "async/async_call_monitor_dlg.h"
#include "model/model.h"
#include "ui/messages.h"
#include "ui/string_table.h"

namespace quenvolta
{

void CheckConsistency(QWidget* parent, CModel& model, IcMessages& messages, const QString& repository)
{
    CAsyncCallMonitorDlg progress(parent, ProgressTextsOf(ActivityKind::CheckConsistency));
    model.CheckReplicationConsistency(repository, progress);
    messages.ShowText({MessageIcon::Information, MessageButtons::Ok},
                      LoadString(StringId::kRepositoryIsConsistent, repository));
}

} // namespace quenvolta
