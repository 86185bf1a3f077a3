#include "repositories/repository_wizard/summary_page.h"

#include "ui_repository_summary_page.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2038;

} // namespace

CSummaryPage::CSummaryPage()
    : CWizardPage(kTopic)
    , m_ui(std::make_unique<Ui::RepositorySummaryPage>())
{
    m_ui->setupUi(this);
    LinkToHelp(*m_ui->learnMore, kTopic);
}

CSummaryPage::~CSummaryPage() = default;

void CSummaryPage::SetText(const QString& text)
{
    m_ui->summary->SetText(text);
}

} // namespace quenvolta::RepositoryWizard
