#include "provider/activities/repository_import.h"

#include "provider/activities/activity_texts.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_pool.h"
#include "provider/svn/svn_repository.h"

#include <apr_file_io.h>
#include <apr_portable.h>
#include <svn_io.h>
#include <svn_repos.h>

namespace quenvolta
{

namespace
{

// A file that asks now and then whether it shall go on: the library itself asks between the parts of a dump only, and
// a part may be a file of many gigabytes.
struct DumpReader {
    svn_stream_t* file;
    const CancelCheck& cancel;
};

svn_error_t* ReadDump(void* baton, char* buffer, apr_size_t* length)
{
    auto* reader = static_cast<DumpReader*>(baton);
    if (*length > 1) { // lines are read by the character
        if (svn_error_t* cancelled = SvnCancelCallback(const_cast<CancelCheck*>(&reader->cancel)))
            return cancelled;
    }
    return svn_stream_read_full(reader->file, buffer, length);
}

svn_stream_t* OpenDump(DumpReader* reader, const UniqueFd& descriptor, const QString& what, SvnPool& pool)
{
    apr_os_file_t given = descriptor.Get();
    apr_file_t* file = nullptr;
    const apr_int32_t flags = APR_READ | APR_BUFFERED | APR_FOPEN_NOCLEANUP;
    if (const apr_status_t status = apr_os_file_put(&file, &given, flags, pool.Get()); status != APR_SUCCESS)
        ThrowSystemError(status, what);
    reader->file = svn_stream_from_aprfile2(file, TRUE, pool.Get());
    svn_stream_t* stream = svn_stream_create(reader, pool.Get());
    svn_stream_set_read2(stream, nullptr, &ReadDump);
    return stream;
}

QString What(const replies::Text& text, const ImportSource& source)
{
    return text.arg(RepositoryNames::ShowFile(source.Path()));
}

} // namespace

void RepositoryImport::HotCopy(const ImportSource& source, const QString& folder, const CancelCheck& cancel)
{
    SvnPool pool;
    CheckSvn(svn_repos_hotcopy3(source.Path().toUtf8().constData(), folder.toUtf8().constData(), FALSE, FALSE, nullptr,
                                nullptr, &SvnCancelCallback, const_cast<CancelCheck*>(&cancel), pool.Get()),
             What(replies::kCannotCopy, source));
    SvnRepository(folder.toUtf8(), source.Path(), pool).YoungestRevision();
}

void RepositoryImport::Load(const ImportSource& source, const QString& folder, const CancelCheck& cancel)
{
    const UniqueFd descriptor = source.OpenFile();
    const QString what = What(replies::kCannotLoad, source);
    SvnPool pool;
    SvnRepository::CreateEmpty(folder, source.Path());
    const SvnRepository repository(folder.toUtf8(), source.Path(), pool, SvnRepository::Flush::Caller);
    DumpReader reader{nullptr, cancel};
    svn_stream_t* dump = OpenDump(&reader, descriptor, what, pool);
    CheckSvn(svn_repos_load_fs6(repository.Handle(), dump, SVN_INVALID_REVNUM, SVN_INVALID_REVNUM,
                                svn_repos_load_uuid_default, nullptr, FALSE, FALSE, TRUE, FALSE, TRUE, nullptr, nullptr,
                                &SvnCancelCallback, const_cast<CancelCheck*>(&cancel), pool.Get()),
             what);
}

} // namespace quenvolta
