#pragma once

#include "platform/channel/message.h"
#include "provider/data_folder.h"
#include "provider/management_namespace.h"
#include "provider/served_version.h"

#include <QString>

#include <memory>
#include <vector>

namespace quenvolta
{

/// The namespaces of the server in one data folder.
class ServedNamespaces
{
public:
    /// ProviderError when the folder can't be used.
    ServedNamespaces(const QString& dataFolder, const ServedVersion& version);

    DataFolder& Data() { return m_data; }

    /// WBEM_E_INVALID_NAMESPACE when there is none of this name. Case doesn't matter.
    ManagementNamespace& Require(const QString& name) const;

    /// What the call changes.
    ManagementClass::Effect EffectOf(const CallMessage& call) const;

    /// Carries the call out; its result. Throws what the operation throws.
    ResultMessage Carry(const CallMessage& call, CallContext& context) const;

private:
    DataFolder m_data;
    std::vector<std::unique_ptr<ManagementNamespace>> m_namespaces;
};

} // namespace quenvolta
