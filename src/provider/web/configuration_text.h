#pragma once

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// A configuration of httpd being written. Arguments are quoted, so that no value can end its argument, its line or its
/// section.
class ConfigurationText
{
public:
    /// Appends `directive` with its arguments. ProviderError (WBEM_E_INVALID_PARAMETER) for an argument that can't be
    /// written: one with a control character, or with "${", which httpd would replace wherever it stands.
    void Add(QLatin1StringView directive, const QStringList& arguments);
    void Open(QLatin1StringView section, const QString& argument);
    void Close();
    /// Appends lines as they are: the program's own words only.
    void AddFixed(QLatin1StringView lines);

    /// An argument as it stands in a configuration, in quotation marks.
    static QString Quote(const QString& argument);

    const QString& Text() const { return m_text; }

private:
    void Indent();

    QString m_text;
    QStringList m_sections;
};

} // namespace quenvolta
