#pragma once

#include "snapin/extension_item.h"

namespace quenvolta
{

/// The node of a computer among the tools for it.
class CCompManagerExtensionItem final : public CExtensionItem<CCompManagerExtensionItem>
{
public:
    static constexpr NodeType kNodeType{{0x476E6449, 0xAAFF, 0x11D0, 0xB9, 0x44, 0x00, 0xC0, 0x4F, 0xD8, 0xD5, 0xB0}};
    using CExtensionItem::CExtensionItem;
};

/// The node of a server among the tools for servers.
class CServerManagerExtensionItem final : public CExtensionItem<CServerManagerExtensionItem>
{
public:
    static constexpr NodeType kNodeType{{0xBD1C2544, 0xCF5B, 0x4640, 0xB8, 0x3E, 0xA5, 0xB7, 0x1A, 0xAE, 0x2E, 0x4A}};
    using CExtensionItem::CExtensionItem;
};

} // namespace quenvolta
