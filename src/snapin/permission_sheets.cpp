#include "snapin/permission_sheets.h"

#include "accounts/model_security_page_host.h"
#include "accounts/security_page.h"
#include "model/repository_info.h"
#include "repositories/hooks_page.h"
#include "snapin/dialogs.h"
#include "ui/property_sheet.h"
#include "ui/string_table.h"

namespace quenvolta
{

namespace
{

bool IsOfSlave(const DialogRequest& request)
{
    return request.repository != nullptr && request.repository->type == kRepositoryTypeQdfsSlave;
}

std::unique_ptr<CSecurityPage> SecurityPageOf(const DialogRequest& request, const TreePosition& position)
{
    // A slave's permissions come from its master.
    return std::make_unique<CSecurityPage>(std::make_unique<CModelSecurityPageHost>(request.model, position),
                                           IsOfSlave(request) ? CSecurityPage::Mode::ReadOnly
                                                              : CSecurityPage::Mode::Editable);
}

std::unique_ptr<CHooksPage> HooksPageOf(const DialogRequest& request)
{
    return std::make_unique<CHooksPage>(request.model, request.position.repositoryName,
                                        IsOfSlave(request) ? CHooksPage::Role::Slave : CHooksPage::Role::Standalone);
}

} // namespace

bool ShowGlobalPermissions(const DialogRequest& request)
{
    CPropertySheet sheet(request.parent, LoadString(StringId::kPropertiesFor, QString(), QString()));
    sheet.AddPage(SecurityPageOf(request, {}));
    return sheet.exec() == QDialog::Accepted;
}

bool ShowRepositoryProperties(const DialogRequest& request)
{
    const TreePosition& position = request.position;
    const bool isRepository = position.path == u"/";
    CPropertySheet sheet(request.parent, LoadString(StringId::kPropertiesFor, position.repositoryName,
                                                    isRepository ? QString() : position.path));
    sheet.AddPage(SecurityPageOf(request, position));
    if (isRepository)
        sheet.AddPage(HooksPageOf(request));
    sheet.SetActivePage(request.page);
    return sheet.exec() == QDialog::Accepted;
}

} // namespace quenvolta
