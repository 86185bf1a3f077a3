#pragma once

#include "platform/mmc/console.h"

namespace quenvolta
{

/// A text in the console's status bar for as long as this lives.
class CStatusText
{
public:
    CStatusText(IConsole& console, const QString& text)
        : m_console(console)
    {
        m_console.SetStatusText(text);
    }
    ~CStatusText() { m_console.SetStatusText({}); }
    CStatusText(const CStatusText&) = delete;
    CStatusText& operator=(const CStatusText&) = delete;

private:
    IConsole& m_console;
};

} // namespace quenvolta
