#pragma once

#include "platform/hresult.h"

#include <QByteArray>
#include <QString>

#include <exception>

namespace quenvolta
{

/// What every operation of the provider throws: the code and the words that the console shows.
class ProviderError : public std::exception
{
public:
    /// `description` names the object, what is wrong and what to do; `details` is the whole technical story, one cause
    /// a line; `probableReason` is 0 (none) or one of the console's guidance numbers 1 to 5.
    ProviderError(HRESULT code, const QString& description, const QString& summary = {}, const QString& details = {},
                  qint32 probableReason = 0);

    HRESULT Code() const { return m_code; }
    const QString& Description() const { return m_description; }
    const QString& Summary() const { return m_summary; }
    const QString& Details() const { return m_details; }
    qint32 ProbableReason() const { return m_probableReason; }

    /// The description in UTF-8.
    const char* what() const noexcept override { return m_what.constData(); }

private:
    HRESULT m_code;
    QString m_description;
    QString m_summary;
    QString m_details;
    qint32 m_probableReason;
    QByteArray m_what;
};

} // namespace quenvolta
