#include "provider/web/configuration_text.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"
#include "provider/web/web_texts.h"

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

QString ConfigurationText::Quote(const QString& argument)
{
    const bool hasControl = std::any_of(argument.cbegin(), argument.cend(),
                                        [](QChar each) { return each.category() == QChar::Other_Control; });
    if (hasControl || argument.contains("${"_L1))
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kCannotBeWritten.arg(RepositoryNames::Show(argument)));
    QString quoted = argument;
    quoted.replace(u'\\', "\\\\"_L1).replace(u'"', "\\\""_L1);
    return u'"' + quoted + u'"';
}

void ConfigurationText::Add(QLatin1StringView directive, const QStringList& arguments)
{
    Indent();
    m_text += directive;
    for (const QString& argument : arguments)
        m_text += u' ' + Quote(argument);
    m_text += u'\n';
}

void ConfigurationText::Open(QLatin1StringView section, const QString& argument)
{
    Indent();
    m_text += u'<' + section + u' ' + Quote(argument) + ">\n"_L1;
    m_sections.append(section);
}

void ConfigurationText::Close()
{
    const QString section = m_sections.takeLast();
    Indent();
    m_text += "</"_L1 + section + ">\n"_L1;
}

void ConfigurationText::AddFixed(QLatin1StringView lines)
{
    m_text += lines;
}

void ConfigurationText::Indent()
{
    m_text += QString(2 * m_sections.size(), u' ');
}

} // namespace quenvolta
