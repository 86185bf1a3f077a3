#include "repositories/server_paths.h"

namespace quenvolta
{

namespace
{

bool IsDrivePath(QStringView path)
{
    if (path.size() < 3)
        return false;
    const char16_t drive = path[0].toLower().unicode();
    return drive >= u'a' && drive <= u'z' && path[0].unicode() < 0x80 && path[1] == u':' &&
           (path[2] == u'\\' || path[2] == u'/');
}

bool IsNetworkPath(QStringView path)
{
    if (!path.startsWith(u"\\\\"))
        return false;
    const QStringView rest = path.sliced(2);
    const qsizetype end = rest.indexOf(u'\\');
    if (end <= 0)
        return false;
    const QStringView server = rest.first(end);
    return server != u"?" && server != u"." && rest.size() - end >= 2;
}

} // namespace

bool IsAbsoluteOrNetworkPath(QStringView path)
{
    return IsDrivePath(path) || IsNetworkPath(path);
}

bool NamesFilesFromSlash(QStringView repositoriesRoot)
{
    return repositoriesRoot.startsWith(u'/');
}

bool IsPathOnServer(QStringView path, QStringView repositoriesRoot)
{
    return IsAbsoluteOrNetworkPath(path) || (NamesFilesFromSlash(repositoriesRoot) && path.startsWith(u'/'));
}

} // namespace quenvolta
