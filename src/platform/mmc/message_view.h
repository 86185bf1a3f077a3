#pragma once

#include "platform/hresult.h"
#include "platform/mmc/result_view.h"

#include <QString>

namespace quenvolta
{

enum class IconIdentifier {
    Icon_None,
    Icon_Error,
    Icon_Question,
    Icon_Warning,
    Icon_Information,
};

/// The result view of the type CLSID_MessageView: an icon, a title, a text. All of it is plain text.
class IMessageView : public IResultView
{
public:
    virtual HRESULT SetTitleText(const QString& title) = 0;
    virtual HRESULT SetBodyText(const QString& body) = 0;
    virtual HRESULT SetIcon(IconIdentifier icon) = 0;
    virtual HRESULT Clear() = 0;
};

} // namespace quenvolta
