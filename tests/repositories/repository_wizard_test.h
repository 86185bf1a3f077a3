#pragma once

#include "repositories/repository_wizard/repository_wizard.h"
#include "repositories_test.h"

#include <QComboBox>
#include <QRadioButton>
#include <QTextEdit>
#include <QWizard>

namespace quenvolta::test
{

/// The new repository wizard over a stand-in server, opened, and hands to go through it.
class RepositoryWizardTest : public RepositoriesTest
{
protected:
    using Wizard = RepositoryWizard::CRepositoryWizard;

    void Start()
    {
        wizard = std::make_unique<Wizard>(nullptr, model, preferences);
        Open(*wizard);
        server.ClearCalls();
    }

    QWizardPage& Shown() { return *wizard->currentPage(); }
    QString Title() { return Shown().title(); }
    /// The button that goes on, whatever it is called on the page.
    QPushButton& Next()
    {
        auto* commit = qobject_cast<QPushButton*>(wizard->button(QWizard::CommitButton));
        return commit->isVisible() ? *commit : *qobject_cast<QPushButton*>(wizard->button(QWizard::NextButton));
    }
    void GoOn() { Click(Next()); }
    void GoBack() { Click(*wizard->button(QWizard::BackButton)); }
    bool CanGoBack() { return wizard->button(QWizard::BackButton)->isEnabled(); }
    void Choose(const char* option) { Click(Shown(), option); }
    void TypeInto(const char* field, const QString& text)
    {
        Part<QLineEdit>(Shown(), field).clear(); // keys of other scripts have no codes
        Part<QLineEdit>(Shown(), field).insert(text);
        Part<QLineEdit>(Shown(), field).setFocus();
    }
    bool FocusIsOn(const char* field) { return wizard->focusWidget() == &Part<QWidget>(Shown(), field); }
    /// Goes on where a message must be shown and the page kept.
    QString Refusal()
    {
        QWizardPage* page = &Shown();
        Next().setFocus();
        const QString text = MessageOf([this] { GoOn(); });
        EXPECT_EQ(page, &Shown());
        return text;
    }
    QString Summary() { return Part<QTextEdit>(Shown(), "summary").toPlainText(); }
    /// From the first page to the name page, and beyond it.
    void GoPastName(const QString& name)
    {
        TypeInto("name", name);
        GoOn();
    }
    void StartFsfs(const QString& name)
    {
        Start();
        GoOn();
        GoPastName(name);
    }
    void StartMaster(const QString& name)
    {
        Start();
        Choose("qdfs");
        GoOn();
        GoOn();
        GoPastName(name);
    }
    void StartSlave()
    {
        Start();
        Choose("qdfs");
        GoOn();
        Choose("slave");
        GoOn();
    }

    std::unique_ptr<Wizard> wizard;
};

} // namespace quenvolta::test
