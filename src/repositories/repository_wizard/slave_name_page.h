#pragma once

#include "repositories/repository_wizard/name_page_base.h"

namespace quenvolta::RepositoryWizard
{

/// The name of a slave: that of its master until another one is typed. Next creates the slave.
class CSlaveNamePage final : public CNamePageBase
{
    Q_OBJECT

public:
    explicit CSlaveNamePage(IcRepositoryWizard& wizard);

    void OnActivate() override;

protected:
    bool OnNext() override;

private:
    bool m_typed = false;
};

} // namespace quenvolta::RepositoryWizard
