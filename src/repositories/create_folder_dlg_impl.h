#pragma once

#include "ui/expandable_dialog.h"

#include <memory>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace quenvolta
{

class IcCreateFolderExecutor;

/// Asks for a name and a commit message, and stays open until its executor has done its work.
class CCreateFolderDlgImpl : public CExpandableDialog
{
    Q_OBJECT

public:
    ~CCreateFolderDlgImpl() override;

    void accept() override;

protected:
    CCreateFolderDlgImpl(QWidget* parent, std::unique_ptr<IcCreateFolderExecutor> executor);

    /// What a form of such a dialog has.
    template <typename Form>
    void SetUp(Form& form)
    {
        form.setupUi(this);
        SetUp({*form.name, *form.message, *form.details, *form.hooksNote, *form.buttons});
    }

private:
    struct Parts {
        QLineEdit& name;
        QPlainTextEdit& message;
        QWidget& details;
        QLabel& hooksNote;
        QDialogButtonBox& buttons;
    };
    void SetUp(const Parts& parts);
    void ProposeMessage();

    std::unique_ptr<IcCreateFolderExecutor> m_executor;
    QLineEdit* m_name = nullptr;
    QPlainTextEdit* m_message = nullptr;
    bool m_messageEdited = false;
};

} // namespace quenvolta
