#include "provider/web/web_folder.h"

#include "provider/provider_error.h"
#include "provider/web/web_texts.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>

namespace quenvolta
{

WebFolder::WebFolder(const QString& dataFolder)
    : m_data(QFileInfo(dataFolder).canonicalFilePath())
{
    if (m_data.isEmpty()) // it isn't there yet
        m_data = QFileInfo(dataFolder).absoluteFilePath();
}

void WebFolder::Make() const
{
    for (const QString& folder : {Path(), RunFolder(), LogsFolder()}) {
        if (::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) != 0 && errno != EEXIST)
            throw ProviderError(errno == EACCES ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED,
                                webtexts::kCannotWrite.arg(folder, qt_error_string(errno)));
    }
}

} // namespace quenvolta
