#include "provider/web/web_leftovers.h"

#include "provider/provider_error.h"
#include "provider/web/service_operation.h"
#include "provider/web/staged_file.h"

#include <QFile>

#include <algorithm>

namespace quenvolta
{

void RemoveWebLeftovers(const WebFolder& folder, const DataLock&)
{
    for (const QString& target : {folder.Configuration(), folder.Users(), folder.Permissions()})
        QFile::remove(StagedFile::PathFor(target));

    // These are written while the service is started, without the lock of the settings.
    QStringList notes{folder.Listening(), folder.ProvenListening(), folder.ProvenConfiguration()};
    std::transform(notes.begin(), notes.end(), notes.begin(), &StagedFile::PathFor);
    if (std::none_of(notes.cbegin(), notes.cend(), [](const QString& each) { return QFile::exists(each); }))
        return;
    try {
        const ServiceOperation operation(folder, ServiceOperation::Kind::Start, [] { return true; });
        for (const QString& note : std::as_const(notes))
            QFile::remove(note);
    } catch (const ProviderError&) {
        return; // somebody is at it, and will put them in place
    }
}

} // namespace quenvolta
