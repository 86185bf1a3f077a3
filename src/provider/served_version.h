#pragma once

#include "platform/wbem/class_table.h"

#include <QString>

namespace quenvolta
{

/// The version that the provider presents itself as.
class ServedVersion
{
public:
    /// This program's own version.
    ServedVersion();
    /// `text` is dotted numbers; an Exception when it can't be parsed.
    explicit ServedVersion(const QString& text);

    const QString& Text() const { return m_text; }
    TableVersion Table() const { return m_table; }

private:
    QString m_text;
    TableVersion m_table;
};

} // namespace quenvolta
