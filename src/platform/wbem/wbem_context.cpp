#include "platform/wbem/wbem_context.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

namespace
{

class WbemContext final : public IWbemContext
{
    using NamedValue = std::pair<QString, Variant>;

    static auto Named(const QString& name)
    {
        return [&name](const NamedValue& each) { return each.first.compare(name, Qt::CaseInsensitive) == 0; };
    }

public:
    HRESULT SetValue(const QString& name, int flags, const Variant& value) override
    {
        if (flags != 0 || name.isEmpty())
            return WBEM_E_INVALID_PARAMETER;
        const auto found = std::find_if(m_values.begin(), m_values.end(), Named(name));
        if (found == m_values.end())
            m_values.append({name, value});
        else
            found->second = value;
        return S_OK;
    }

    HRESULT GetValue(const QString& name, int flags, Variant* value) const override
    {
        if (flags != 0)
            return WBEM_E_INVALID_PARAMETER;
        const auto found = std::find_if(m_values.cbegin(), m_values.cend(), Named(name));
        if (found == m_values.cend())
            return WBEM_E_NOT_FOUND;
        *value = found->second;
        return S_OK;
    }

    HRESULT GetNames(int flags, QStringList* names) const override
    {
        if (flags != 0)
            return WBEM_E_INVALID_PARAMETER;
        names->clear();
        for (const auto& value : m_values)
            names->append(value.first);
        return S_OK;
    }

private:
    QList<NamedValue> m_values;
};

} // namespace

WbemContextPtr CreateWbemContext()
{
    return std::make_shared<WbemContext>();
}

} // namespace quenvolta
