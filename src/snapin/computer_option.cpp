#include "snapin/computer_option.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

ComputerOption FindComputerOption(const QStringList& arguments)
{
    const QString option = u"/computer"_s;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (!argument.startsWith(option, Qt::CaseInsensitive))
            continue;
        if (argument.size() == option.size()) {
            if (i + 1 < arguments.size())
                return {arguments[i + 1], i, 2};
        } else if (argument[option.size()] == u'=') {
            return {argument.sliced(option.size() + 1), i, 1};
        }
    }
    return {};
}

} // namespace quenvolta
