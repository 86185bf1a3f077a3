#pragma once

#include "platform/hresult.h"

#include <QString>

#include <memory>

namespace quenvolta
{

/// What is known of a failure beyond its code. An extended error of the server is an IWbemClassObject as well.
class IErrorInfo
{
public:
    virtual ~IErrorInfo() = default;
    /// The words to show; may be empty.
    virtual HRESULT GetDescription(QString* description) const = 0;
};
using ErrorInfoPtr = std::shared_ptr<IErrorInfo>;

/// Keeps the error information of the calling thread's last failed call (null clears it).
void SetErrorInfo(ErrorInfoPtr info);

/// Hands out the calling thread's error information and clears it. S_FALSE and null when there is none.
HRESULT GetErrorInfo(ErrorInfoPtr* info);

/// Error information that is words alone.
ErrorInfoPtr CreateErrorInfo(const QString& description);

} // namespace quenvolta
