#include "accounts/password_fields.h"

#include "accounts/password_generator.h"

#include <QCheckBox>
#include <QLineEdit>

namespace quenvolta
{

PasswordFields::PasswordFields(QLineEdit& password, QLineEdit& confirmation, QCheckBox& show, QAbstractButton& generate)
    : QObject(&password)
    , m_password(password)
    , m_confirmation(confirmation)
    , m_show(show)
{
    connect(&show, &QCheckBox::toggled, this, [this](bool shown) {
        for (QLineEdit* field : {&m_password, &m_confirmation})
            field->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password);
    });
    connect(&generate, &QAbstractButton::clicked, this, &PasswordFields::Generate);
}

QString PasswordFields::Password() const
{
    return m_password.text();
}

bool PasswordFields::AreEqual() const
{
    return m_password.text() == m_confirmation.text();
}

void PasswordFields::Generate()
{
    const QString password = GeneratePassword();
    m_password.setText(password);
    m_confirmation.setText(password);
    m_show.setChecked(true); // else nobody would ever know it
    m_password.setFocus();
    m_password.selectAll();
}

} // namespace quenvolta
