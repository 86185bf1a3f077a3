#include "accounts/windows_account_names.h"

#include "foundation/exception.h"
#include "model/computer_directory.h"
#include "model/model.h"

#include <QHash>

namespace quenvolta
{

QStringList WindowsAccountNames(CModel& model, const QStringList& sids)
{
    QHash<QString, QString> names;
    try {
        if (!sids.isEmpty()) {
            for (const DirectoryObject& object : model.OpenComputerDirectory()->Resolve(sids))
                names.insert(object.sid, object.domain + u'\\' + object.name);
        }
    } catch (const Exception&) {
        names.clear(); // the permissions themselves can be read, and matter more than names
    }
    QStringList shown;
    for (const QString& sid : sids)
        shown.append(names.value(sid, sid));
    return shown;
}

} // namespace quenvolta
