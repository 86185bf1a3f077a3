#include "host/message_view_page.h"

#include "host/page_fonts.h"
#include "ui/icons.h"
#include "ui_message_view_page.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QIcon IconOf(IconIdentifier icon)
{
    switch (icon) {
    case IconIdentifier::Icon_Error:
        return IconNamed(u"error"_s);
    case IconIdentifier::Icon_Question:
        return IconNamed(u"question"_s);
    case IconIdentifier::Icon_Warning:
        return IconNamed(u"warning"_s);
    case IconIdentifier::Icon_Information:
        return IconNamed(u"information"_s);
    case IconIdentifier::Icon_None:
        break;
    }
    return {};
}

} // namespace

MessageViewPage::MessageViewPage(QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::MessageViewPage>())
{
    m_ui->setupUi(this);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setFocusProxy(m_ui->body);
    SetTitleFont(*m_ui->title);
    m_ui->body->document()->setDocumentMargin(0);
}

MessageViewPage::~MessageViewPage() = default;

HRESULT MessageViewPage::SetTitleText(const QString& title)
{
    m_ui->title->setText(title);
    return S_OK;
}

HRESULT MessageViewPage::SetBodyText(const QString& body)
{
    m_ui->body->setPlainText(body);
    return S_OK;
}

HRESULT MessageViewPage::SetIcon(IconIdentifier icon)
{
    m_ui->icon->setPixmap(IconOf(icon).pixmap(kPageIconSize, devicePixelRatioF()));
    return S_OK;
}

HRESULT MessageViewPage::Clear()
{
    SetIcon(IconIdentifier::Icon_None);
    m_ui->title->clear();
    m_ui->body->clear();
    return S_OK;
}

} // namespace quenvolta
