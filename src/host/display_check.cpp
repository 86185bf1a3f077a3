#include "host/display_check.h"

#include "ui/string_table.h"

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace quenvolta
{

namespace
{

void EndWithoutDisplay()
{
    std::fprintf(stderr, "%s\n", qPrintable(LoadString(StringId::kNoDisplay)));
    std::_Exit(kNoDisplayStatus);
}

void OnMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtFatalMsg)
        EndWithoutDisplay();
}

bool NamesADisplay()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

} // namespace

DisplayCheck::DisplayCheck()
{
    if (!NamesADisplay())
        EndWithoutDisplay();
    qInstallMessageHandler(&OnMessage);
}

DisplayCheck::~DisplayCheck()
{
    qInstallMessageHandler(nullptr);
}

} // namespace quenvolta
