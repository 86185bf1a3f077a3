#include "model/server_proxy.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

HookInfo CServerProxy::GetHook(const QString& repositoryName, HookKind kind)
{
    const WMIObject out = ServerCall(m_connection, m_classes.repository, u"GetHook"_s)
                              .With(u"Kind"_s, static_cast<std::int32_t>(kind))
                              .Run(RepositoryPath(repositoryName));
    return {out.IsNull(u"Hook"_s) ? QString{} : out.GetString(u"Hook"_s), out.GetBool(u"ReturnValue"_s)};
}

void CServerProxy::SetHook(const QString& repositoryName, HookKind kind, const QString& text)
{
    ServerCall(m_connection, m_classes.repository, u"SetHook"_s)
        .With(u"Kind"_s, static_cast<std::int32_t>(kind))
        .With(u"Hook"_s, text)
        .Run(RepositoryPath(repositoryName));
}

void CServerProxy::DeleteHook(const QString& repositoryName, HookKind kind)
{
    ServerCall(m_connection, m_classes.repository, u"DeleteHook"_s)
        .With(u"Kind"_s, static_cast<std::int32_t>(kind))
        .Run(RepositoryPath(repositoryName));
}

} // namespace quenvolta
