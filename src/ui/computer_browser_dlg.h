#pragma once

#include <QDialog>
#include <QProcess>
#include <QString>

#include <memory>

namespace Ui
{
class ComputerBrowserDlg;
}

namespace quenvolta
{

/// Lets a person choose a computer: the hosts that the person's ssh files name, and those that the network announces.
class CComputerBrowserDlg final : public QDialog
{
    Q_OBJECT

public:
    /// `sshFolder` empty: the person's own.
    explicit CComputerBrowserDlg(QWidget* parent, const QString& sshFolder = {});
    ~CComputerBrowserDlg() override;

    /// Empty while none is chosen.
    QString Computer() const;

private:
    void Add(const QString& name, const QString& origin);
    void AskNetwork();
    void TakeAnnouncements();
    void ApplyFilter(const QString& text);
    void UpdateButtons();

    std::unique_ptr<Ui::ComputerBrowserDlg> m_ui;
    QProcess m_announcements;
};

} // namespace quenvolta
