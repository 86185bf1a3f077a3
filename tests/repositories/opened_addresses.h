#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace quenvolta::test
{

/// Takes the addresses that would be opened in the browser.
class OpenedAddresses final : public QObject
{
    Q_OBJECT

public:
    OpenedAddresses() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Take"); }
    ~OpenedAddresses() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    QStringList taken;

public Q_SLOTS:
    void Take(const QUrl& address) { taken.append(address.toString()); }
};

} // namespace quenvolta::test
