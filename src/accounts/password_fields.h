#pragma once

#include <QObject>
#include <QString>

class QAbstractButton;
class QCheckBox;
class QLineEdit;

namespace quenvolta
{

/// A password and its confirmation in a dialog: both can be shown while they are typed, and generated.
class PasswordFields final : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the password's field.
    PasswordFields(QLineEdit& password, QLineEdit& confirmation, QCheckBox& show, QAbstractButton& generate);

    QString Password() const;
    /// True when the confirmation is the password, exactly.
    bool AreEqual() const;

private:
    void Generate();

    QLineEdit& m_password;
    QLineEdit& m_confirmation;
    QCheckBox& m_show;
};

} // namespace quenvolta
