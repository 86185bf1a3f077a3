#include "provider/web/web_folder.h"

#include "provider/provider_error.h"
#include "provider/web/web_texts.h"

#include <QFile>

#include <cerrno>
#include <sys/stat.h>

namespace quenvolta
{

void WebFolder::Make() const
{
    for (const QString& folder : {Path(), RunFolder(), LogsFolder()}) {
        if (::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) != 0 && errno != EEXIST)
            throw ProviderError(errno == EACCES ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED,
                                webtexts::kCannotWrite.arg(folder, qt_error_string(errno)));
    }
}

} // namespace quenvolta
