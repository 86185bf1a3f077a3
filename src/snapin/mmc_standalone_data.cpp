#include "snapin/mmc_standalone_data.h"

#include "snapin/computer_option.h"

namespace quenvolta
{

CMMCStandaloneData::CMMCStandaloneData(const SnapInServices& services, const QStringList& arguments)
    : CMMCComponentData(services, false)
{
    const QString computer = FindComputerOption(arguments).computer;
    if (!computer.isEmpty())
        Model().SetComputer(computer, true); // the root connects when it is expanded, and shows why it can't
}

} // namespace quenvolta
