#include "platform/wbem/error_info.h"

#include <utility>

namespace quenvolta
{

namespace
{

class TextErrorInfo final : public IErrorInfo
{
public:
    explicit TextErrorInfo(QString description)
        : m_description(std::move(description))
    {
    }

    HRESULT GetDescription(QString* description) const override
    {
        *description = m_description;
        return S_OK;
    }

private:
    QString m_description;
};

// The platform's contract: a failed call leaves its information with the thread that made it.
ErrorInfoPtr& CurrentErrorInfo()
{
    static thread_local ErrorInfoPtr current;
    return current;
}

} // namespace

void SetErrorInfo(ErrorInfoPtr info)
{
    CurrentErrorInfo() = std::move(info);
}

HRESULT GetErrorInfo(ErrorInfoPtr* info)
{
    *info = std::exchange(CurrentErrorInfo(), nullptr);
    return *info ? S_OK : S_FALSE;
}

ErrorInfoPtr CreateErrorInfo(const QString& description)
{
    return std::make_shared<TextErrorInfo>(description);
}

} // namespace quenvolta
