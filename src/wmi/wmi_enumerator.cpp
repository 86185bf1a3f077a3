#include "wmi/wmi_enumerator.h"

#include "foundation/com_exception.h"
#include "wmi/wmi_error.h"

#include <utility>

namespace quenvolta
{

namespace
{

constexpr int kChunk = 256;

} // namespace

WMIEnumerator::WMIEnumerator(EnumWbemClassObjectPtr handle)
    : m_handle(std::move(handle))
{
}

bool WMIEnumerator::Next(WMIObject* object)
{
    while (m_position == m_fetched.size()) {
        if (m_ended)
            return false;
        m_fetched.clear();
        m_position = 0;
        SetErrorInfo(nullptr);
        const HRESULT code = m_handle->Next(WBEM_INFINITE, kChunk, &m_fetched);
        if (Failed(code))
            throw ComException(code, TakeErrorInformation());
        m_ended = code == S_FALSE;
    }
    *object = WMIObject(std::move(m_fetched[m_position++]));
    return true;
}

} // namespace quenvolta
