#pragma once

#include "platform/mmc/context_menu.h"

#include <QList>

namespace quenvolta
{

/// Keeps the items that a snap-in adds to a menu.
class MenuCollector final : public IContextMenuCallback
{
public:
    HRESULT AddItem(const CONTEXTMENUITEM& item) override
    {
        items.append(item);
        return S_OK;
    }

    QList<CONTEXTMENUITEM> items;
};

} // namespace quenvolta
