#include "repositories/edit_hook_dlg.h"

#include "repositories/hook_description.h"
#include "repositories/script_lines.h"
#include "ui_edit_hook_dlg.h"

#include <QFontDatabase>
#include <QFontMetrics>

namespace quenvolta
{

CEditHookDlg::CEditHookDlg(QWidget* parent, const HookDescription& hook, const QString& text, Interpreter interpreter)
    : CBaseDialog(parent)
    , m_original(text)
    , m_interpreter(interpreter)
    , m_ui(std::make_unique<Ui::EditHookDlg>())
{
    m_ui->setupUi(this);
    setWindowTitle(hook.name);
    m_ui->description->setText(hook.description);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(QDialog::font().pointSizeF());
    m_ui->script->setFont(font);
    constexpr int kTabWidth = 8; // in characters
    m_ui->script->setTabStopDistance(QFontMetricsF(font).horizontalAdvance(u' ') * kTabWidth);
    m_ui->script->setPlainText(text);
    m_ui->script->document()->setModified(false);
    m_ui->script->setFocus();
}

CEditHookDlg::~CEditHookDlg() = default;

QString CEditHookDlg::Text() const
{
    const QTextDocument& document = *m_ui->script->document();
    if (!document.isModified())
        return m_original;
    // The raw text: the plain one loses characters such as the no-break space.
    return WithLineEndingsOf(m_original, document.toRawText().replace(QChar::ParagraphSeparator, u'\n'));
}

void CEditHookDlg::accept()
{
    if (IsInterpreterMissed())
        m_ui->script->setFocus();
    else
        CBaseDialog::accept();
}

bool CEditHookDlg::IsInterpreterMissed()
{
    return m_interpreter == Interpreter::Needed && !HasInterpreterLine(Text()) &&
           ShowMessage(this, {MessageIcon::Warning, MessageButtons::YesNo}, StringId::kAskNoInterpreter) !=
               MessageAnswer::Yes;
}

} // namespace quenvolta
