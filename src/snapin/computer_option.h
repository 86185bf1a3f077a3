#pragma once

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// Where a command line names the computer to manage ("/computer=NAME", or "/computer NAME").
struct ComputerOption {
    /// Empty when no computer is named.
    QString computer;
    /// The place of the option among the arguments, -1 when it isn't there, and how many arguments it takes.
    qsizetype index = -1;
    qsizetype count = 0;
};

ComputerOption FindComputerOption(const QStringList& arguments);

} // namespace quenvolta
