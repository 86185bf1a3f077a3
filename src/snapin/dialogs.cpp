#include "snapin/dialogs.h"

#include "ui/arrow_cursor.h"

namespace quenvolta
{

bool DialogTable::Open(DialogKind kind, const DialogRequest& request) const
{
    const DialogOpener opener = m_openers.value(static_cast<int>(kind));
    if (!opener)
        return false;
    const ArrowCursor cursor;
    return opener(request);
}

} // namespace quenvolta
