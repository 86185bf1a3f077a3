#pragma once

#include "repositories/repository_wizard/name_page_base.h"

namespace quenvolta::RepositoryWizard
{

/// The name of a repository of its own, or of a master.
class CNamePage final : public CNamePageBase
{
    Q_OBJECT

public:
    explicit CNamePage(IcRepositoryWizard& wizard);
};

} // namespace quenvolta::RepositoryWizard
