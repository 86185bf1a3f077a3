#include "async/url_download.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <curl/curl.h>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr HRESULT INET_E_INVALID_URL = MakeHResult(0x800C0002);
constexpr HRESULT INET_E_NO_SESSION = MakeHResult(0x800C0003);
constexpr HRESULT INET_E_CANNOT_CONNECT = MakeHResult(0x800C0004);
constexpr HRESULT INET_E_RESOURCE_NOT_FOUND = MakeHResult(0x800C0005);
constexpr HRESULT INET_E_OBJECT_NOT_FOUND = MakeHResult(0x800C0006);
constexpr HRESULT INET_E_DATA_NOT_AVAILABLE = MakeHResult(0x800C0007);
constexpr HRESULT INET_E_DOWNLOAD_FAILURE = MakeHResult(0x800C0008);
constexpr HRESULT INET_E_CONNECTION_TIMEOUT = MakeHResult(0x800C000B);
constexpr HRESULT INET_E_INVALID_REQUEST = MakeHResult(0x800C000C);
constexpr HRESULT INET_E_UNKNOWN_PROTOCOL = MakeHResult(0x800C000D);
constexpr HRESULT INET_E_SECURITY_PROBLEM = MakeHResult(0x800C000E);
constexpr HRESULT INET_E_REDIRECT_FAILED = MakeHResult(0x800C0014);
constexpr HRESULT INET_E_INVALID_CERTIFICATE = MakeHResult(0x800C0019);

constexpr long kBadRequest = 400;
constexpr long kFirstServerError = 500;

struct CurlFailure {
    CURLcode curl;
    HRESULT code;
};

/// What is not here is a failed download.
constexpr std::array kFailures{
    CurlFailure{CURLE_URL_MALFORMAT, INET_E_INVALID_URL},
    CurlFailure{CURLE_UNSUPPORTED_PROTOCOL, INET_E_UNKNOWN_PROTOCOL},
    CurlFailure{CURLE_FAILED_INIT, INET_E_NO_SESSION},
    CurlFailure{CURLE_COULDNT_RESOLVE_PROXY, INET_E_RESOURCE_NOT_FOUND},
    CurlFailure{CURLE_COULDNT_RESOLVE_HOST, INET_E_RESOURCE_NOT_FOUND},
    CurlFailure{CURLE_COULDNT_CONNECT, INET_E_CANNOT_CONNECT},
    CurlFailure{CURLE_OPERATION_TIMEDOUT, INET_E_CONNECTION_TIMEOUT},
    CurlFailure{CURLE_TOO_MANY_REDIRECTS, INET_E_REDIRECT_FAILED},
    CurlFailure{CURLE_PEER_FAILED_VERIFICATION, INET_E_INVALID_CERTIFICATE},
    CurlFailure{CURLE_SSL_CONNECT_ERROR, INET_E_SECURITY_PROBLEM},
    CurlFailure{CURLE_SSL_CACERT_BADFILE, INET_E_SECURITY_PROBLEM},
    CurlFailure{CURLE_FILESIZE_EXCEEDED, INET_E_DATA_NOT_AVAILABLE},
    CurlFailure{CURLE_WEIRD_SERVER_REPLY, INET_E_DATA_NOT_AVAILABLE},
    CurlFailure{CURLE_OUT_OF_MEMORY, E_OUTOFMEMORY},
    CurlFailure{CURLE_ABORTED_BY_CALLBACK, E_ABORT},
};

HRESULT CodeOf(CURLcode result)
{
    const auto* const known = std::ranges::find(kFailures, result, &CurlFailure::curl);
    return known != kFailures.end() ? known->code : INET_E_DOWNLOAD_FAILURE;
}

HRESULT CodeOfStatus(long status)
{
    if (status == kBadRequest)
        return INET_E_INVALID_REQUEST;
    return status < kFirstServerError ? INET_E_OBJECT_NOT_FOUND : INET_E_DATA_NOT_AVAILABLE;
}

/// One request with its limits.
class Request
{
public:
    Request(const DownloadLimits& limits, const std::stop_token& stop)
        : m_limits(limits)
        , m_stop(stop)
    {
        static const CURLcode initialised = curl_global_init(CURL_GLOBAL_DEFAULT);
        if (initialised == CURLE_OK)
            m_curl.reset(curl_easy_init());
    }

    HRESULT Run(const QString& url, DownloadedFile* file)
    {
        if (!m_curl)
            return INET_E_NO_SESSION;
        if (!m_file->open())
            return E_ACCESSDENIED;
        SetOptions(url.toUtf8());
        const CURLcode result = curl_easy_perform(m_curl.get());
        const bool isWritten = m_file->flush();
        m_file->close();
        if (m_failure != S_OK)
            return m_failure;
        if (result == CURLE_HTTP_RETURNED_ERROR) {
            long status = 0;
            curl_easy_getinfo(m_curl.get(), CURLINFO_RESPONSE_CODE, &status);
            return CodeOfStatus(status);
        }
        if (result != CURLE_OK)
            return CodeOf(result);
        if (!isWritten)
            return E_ACCESSDENIED;
        *file = std::move(m_file);
        return S_OK;
    }

private:
    struct EndCurl {
        void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
    };

    template <typename Value>
    void Set(CURLoption option, Value value)
    {
        curl_easy_setopt(m_curl.get(), option, value);
    }

    void SetOptions(const QByteArray& url)
    {
        Set(CURLOPT_URL, url.constData()); // copied
        Set(CURLOPT_PROTOCOLS_STR, "http,https");
        Set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
        Set(CURLOPT_FOLLOWLOCATION, 1L);
        Set(CURLOPT_MAXREDIRS, m_limits.redirections);
        Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_limits.connecting.count()));
        Set(CURLOPT_TIMEOUT_MS, static_cast<long>(m_limits.all.count()));
        Set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(m_limits.bytes));
        Set(CURLOPT_FAILONERROR, 1L);
        Set(CURLOPT_NOSIGNAL, 1L); // there are other threads
        Set(CURLOPT_WRITEFUNCTION, &Request::Write);
        Set(CURLOPT_WRITEDATA, this);
        Set(CURLOPT_XFERINFOFUNCTION, &Request::Progress);
        Set(CURLOPT_XFERINFODATA, this);
        Set(CURLOPT_NOPROGRESS, 0L);
    }

    static std::size_t Write(const char* data, std::size_t /*one*/, std::size_t size, void* request)
    {
        return static_cast<Request*>(request)->Keep(data, static_cast<std::int64_t>(size)) ? size : 0;
    }

    static int Progress(void* request, curl_off_t /*size*/, curl_off_t /*now*/, curl_off_t /*up*/, curl_off_t /*sent*/)
    {
        return static_cast<Request*>(request)->m_stop.stop_requested() ? 1 : 0;
    }

    /// The length that the server announced, if it did, may be wrong.
    bool Keep(const char* data, std::int64_t size)
    {
        if (m_file->size() + size > m_limits.bytes)
            m_failure = INET_E_DATA_NOT_AVAILABLE;
        else if (m_file->write(data, size) != size)
            m_failure = E_ACCESSDENIED;
        return m_failure == S_OK;
    }

    const DownloadLimits& m_limits;
    const std::stop_token& m_stop;
    std::unique_ptr<CURL, EndCurl> m_curl;
    DownloadedFile m_file = std::make_unique<QTemporaryFile>();
    HRESULT m_failure = S_OK;
};

} // namespace

HRESULT FetchUrl(const QString& url, const std::stop_token& stop, DownloadedFile* file)
{
    return FetchUrlWithin({}, url, stop, file);
}

HRESULT FetchUrlWithin(const DownloadLimits& limits, const QString& url, const std::stop_token& stop,
                       DownloadedFile* file)
{
    return Request(limits, stop).Run(url, file);
}

} // namespace quenvolta
