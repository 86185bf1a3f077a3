#pragma once

#include "ui/base_property_page.h"
#include "ui/field_focus.h"
#include "ui/guard.h"
#include "ui/message_boxes.h"
#include "ui/wait_cursor.h"

#include <utility>

namespace quenvolta
{

/// The base of a wizard's pages. A page reads and checks its own fields; which page follows is the wizard's business.
class CWizardPage : public CBasePropertyPageImpl
{
    Q_OBJECT

public:
    /// The topic of the page's help; 0 for a page without.
    explicit CWizardPage(int helpTopic = 0);

    int HelpTopic() const { return m_helpTopic; }
    /// Called each time the page comes into view, on the way back too.
    virtual void OnActivate() {}
    bool validatePage() final;

protected:
    /// Next: false keeps the page. What it throws is shown, and keeps the page.
    virtual bool OnNext() { return true; }

    /// Runs a handler that may take a while. False after a failure, which was shown.
    template <typename Body>
    bool Run(Body&& body)
    {
        return Guarded(m_messages, [&] {
            const WaitCursor cursor;
            std::forward<Body>(body)();
        });
    }
    /// Shows an error and returns the focus to the field; answers false, for OnNext.
    template <typename... Inserts>
    bool Refuse(QWidget& field, int message, const Inserts&... inserts)
    {
        ShowMessage(this, {MessageIcon::Error, MessageButtons::Ok}, message, inserts...);
        FocusOn(field);
        return false;
    }
    IcMessages& Messages() { return m_messages; }

private:
    int m_helpTopic;
    CMessageBoxes m_messages;
};

} // namespace quenvolta
