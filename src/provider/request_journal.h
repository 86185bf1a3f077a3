#pragma once

#include "platform/channel/message.h"
#include "platform/registry/registry.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace quenvolta
{

/// Which changes were begun and which were finished, so that a request that the console repeats after a lost connection
/// is recognised. Kept in the data folder for a day; several providers share it.
class RequestJournal
{
public:
    explicit RequestJournal(const QString& dataFolder);

    /// What is known of a request that comes.
    struct Known {
        bool begun = false;
        /// The answer that it got, when it was finished.
        std::optional<ResultMessage> result;
    };

    /// Looks the request up and notes that it begins. ProviderError when the journal can't be read or written.
    Known Begin(const QUuid& request);
    /// Notes the answer of a request that succeeded.
    void Finish(const QUuid& request, const ResultMessage& result);
    /// Forgets a request that failed: it changed nothing, and may be tried anew.
    void Forget(const QUuid& request);

private:
    void Prune();
    [[noreturn]] void Refuse(Win32Error error) const;

    Registry m_store;
    QString m_folder;
    bool m_pruned = false;
};

} // namespace quenvolta
