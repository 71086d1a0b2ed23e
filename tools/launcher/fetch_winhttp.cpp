#include "fetch.h"

#include "transferpace.h"
#include "widetext.h"

#include <windows.h>
#include <winhttp.h>

#include <io.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

namespace Launcher::Fetch {

namespace {

constexpr DWORD connectMilliseconds = 30 * 1000;
constexpr DWORD maxRedirects = 10;

struct HandleCloser
{
    void operator()(HINTERNET handle) const { WinHttpCloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

struct Sink
{
    int fd = -1;
    std::string *text = nullptr;
    std::uint64_t written = 0;
    std::uint64_t maxBytes = 0;
    bool tooLarge = false;
    bool writeFailed = false;
};

bool receive(Sink &sink, const char *data, DWORD bytes)
{
    if (sink.written + bytes > sink.maxBytes) {
        sink.tooLarge = true;
        return false;
    }
    if (sink.text) {
        sink.text->append(data, bytes);
    } else {
        DWORD done = 0;
        while (done < bytes) {
            const int n = ::_write(sink.fd, data + done, unsigned(bytes - done));
            if (n <= 0) {
                sink.writeFailed = true;
                return false;
            }
            done += DWORD(n);
        }
    }
    sink.written += bytes;
    return true;
}

std::string errorText(DWORD code)
{
    // WinHTTP's own codes are described in its module, not in the system's
    // message table; the system's is searched after it.
    const DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_FROM_SYSTEM
        | FORMAT_MESSAGE_IGNORE_INSERTS;
    wchar_t *buffer = nullptr;
    const DWORD length = FormatMessageW(flags, GetModuleHandleW(L"winhttp.dll"), code, 0,
                                        reinterpret_cast<wchar_t *>(&buffer), 0, nullptr);
    std::wstring message(buffer ? buffer : L"", length);
    LocalFree(buffer);
    while (!message.empty() && (message.back() == L'\r' || message.back() == L'\n' || message.back() == L'.'
                                || message.back() == L' '))
        message.pop_back();
    if (message.empty())
        return "WinHTTP error " + std::to_string(code);
    return fromWide(message);
}

// Plain HTTP is let through only to the machine itself.
bool isLoopbackHost(const std::wstring &host)
{
    if (host == L"localhost" || host == L"[::1]" || host == L"::1")
        return true;
    return host.compare(0, 4, L"127.") == 0 && host.find_first_not_of(L"0123456789.", 4) == std::wstring::npos;
}

bool setNumber(HINTERNET handle, DWORD option, DWORD value)
{
    return WinHttpSetOption(handle, option, &value, sizeof value) != FALSE;
}

std::optional<DWORD> statusCode(HINTERNET request)
{
    DWORD status = 0;
    DWORD size = sizeof status;
    if (!WinHttpQueryHeaders(request, WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                             WINHTTP_HEADER_NAME_BY_INDEX, &status, &size, WINHTTP_NO_HEADER_INDEX))
        return std::nullopt;
    return status;
}

// The Content-Length header as a number, read as text because the numeric
// form of the query is 32 bits wide.
std::optional<std::uint64_t> announcedLength(HINTERNET request)
{
    wchar_t text[32];
    DWORD size = sizeof text;
    if (!WinHttpQueryHeaders(request, WINHTTP_QUERY_CONTENT_LENGTH, WINHTTP_HEADER_NAME_BY_INDEX, text, &size,
                             WINHTTP_NO_HEADER_INDEX))
        return std::nullopt;
    const DWORD digits = size / sizeof(wchar_t);
    // Nineteen decimal digits always fit in 64 bits.
    if (digits == 0 || digits > 19)
        return std::nullopt;
    std::uint64_t value = 0;
    for (DWORD i = 0; i < digits; ++i) {
        if (text[i] < L'0' || text[i] > L'9')
            return std::nullopt;
        value = value * 10 + std::uint64_t(text[i] - L'0');
    }
    return value;
}

Result run(const std::string &address, Sink &sink, const Fetch::Limits &limits)
{
    TransferPace pace(limits, TransferPace::Clock::now());
    // A read that waits a whole rate window for its first byte has stalled;
    // one that returns sooner is judged by the pace.
    const int windowMilliseconds = limits.rateWindowSeconds * 1000;
    const std::wstring wideAddress = toWide(address);
    URL_COMPONENTS parts = {};
    parts.dwStructSize = sizeof parts;
    parts.dwSchemeLength = DWORD(-1);
    parts.dwHostNameLength = DWORD(-1);
    parts.dwUrlPathLength = DWORD(-1);
    parts.dwExtraInfoLength = DWORD(-1);
    if (wideAddress.empty() || !WinHttpCrackUrl(wideAddress.c_str(), DWORD(wideAddress.size()), 0, &parts))
        return {false, "not a valid address: " + address};
    const std::wstring host(parts.lpszHostName, parts.dwHostNameLength);
    // The query follows the path directly in the cracked address.
    const std::wstring target(parts.lpszUrlPath, parts.dwUrlPathLength + parts.dwExtraInfoLength);
    const bool secure = parts.nScheme == INTERNET_SCHEME_HTTPS;
    const bool loopback = isLoopbackHost(host);
    if (!secure && !(parts.nScheme == INTERNET_SCHEME_HTTP && loopback))
        return {false, "not an HTTPS address: " + address};
    const std::string place = fromWide(host) + ":" + std::to_string(parts.nPort);

    // A proxy set up for the outside world would not reach this machine's
    // own servers.
    const DWORD access = loopback ? WINHTTP_ACCESS_TYPE_NO_PROXY : WINHTTP_ACCESS_TYPE_AUTOMATIC_PROXY;
    const Handle session(WinHttpOpen(L"kestreldl2", access, WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0));
    if (!session
        || !WinHttpSetTimeouts(session.get(), int(connectMilliseconds), int(connectMilliseconds),
                               windowMilliseconds, windowMilliseconds))
        return {false, "the download library cannot start"};
    const Handle connection(WinHttpConnect(session.get(), host.c_str(), parts.nPort, 0));
    if (!connection)
        return {false, "cannot connect to " + place + ": " + errorText(GetLastError())};
    // No object name asks for "/", which an address without a path means.
    const Handle request(WinHttpOpenRequest(connection.get(), L"GET", target.empty() ? nullptr : target.c_str(),
                                            nullptr, WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES,
                                            secure ? WINHTTP_FLAG_SECURE : 0));
    // WinHTTP can forbid only the step from HTTPS down to HTTP, not every
    // redirect that does not end on HTTPS; so a plain HTTP request follows
    // none and a redirect answer to it fails by its status.
    const DWORD redirectPolicy =
        secure ? WINHTTP_OPTION_REDIRECT_POLICY_DISALLOW_HTTPS_TO_HTTP : WINHTTP_OPTION_REDIRECT_POLICY_NEVER;
    if (!request || !setNumber(request.get(), WINHTTP_OPTION_REDIRECT_POLICY, redirectPolicy)
        || !setNumber(request.get(), WINHTTP_OPTION_MAX_HTTP_AUTOMATIC_REDIRECTS, maxRedirects)
        || !setNumber(request.get(), WINHTTP_OPTION_RECEIVE_RESPONSE_TIMEOUT, DWORD(windowMilliseconds)))
        return {false, "the download library cannot start"};

    if (!WinHttpSendRequest(request.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0, WINHTTP_NO_REQUEST_DATA, 0, 0, 0))
        return {false, "cannot connect to " + place + ": " + errorText(GetLastError())};
    if (!WinHttpReceiveResponse(request.get(), nullptr))
        return {false, "no answer from " + place + ": " + errorText(GetLastError())};
    const std::optional<DWORD> status = statusCode(request.get());
    if (!status)
        return {false, "no status in the answer from " + place};
    if (*status != 200)
        return {false, "HTTP " + std::to_string(*status)};

    const std::optional<std::uint64_t> announced = announcedLength(request.get());
    if (announced && *announced > sink.maxBytes)
        return {false, "larger than expected"};
    std::vector<char> buffer(64 * 1024);
    for (;;) {
        DWORD n = 0;
        if (!WinHttpReadData(request.get(), buffer.data(), DWORD(buffer.size()), &n)) {
            const DWORD code = GetLastError();
            if (code == ERROR_WINHTTP_TIMEOUT)
                return {false, pace.problem(sink.written, TransferPace::Clock::now())
                                   .value_or(TransferPace::stalled(limits))};
            if (announced && sink.written < *announced)
                return {false, "download cut short"};
            return {false, "download failed: " + errorText(code)};
        }
        if (n == 0 || !receive(sink, buffer.data(), n))
            break;
        if (const std::optional<std::string> problem = pace.problem(sink.written, TransferPace::Clock::now()))
            return {false, *problem};
    }

    if (sink.tooLarge)
        return {false, "larger than expected"};
    if (sink.writeFailed)
        return {false, "cannot write the download: " + std::generic_category().message(errno)};
    if (announced && sink.written < *announced)
        return {false, "download cut short"};
    return {true, {}};
}

} // namespace

Result toFile(const std::string &address, int fd, std::uint64_t maxBytes, const Limits &limits)
{
    Sink sink;
    sink.fd = fd;
    sink.maxBytes = maxBytes;
    return run(address, sink, limits);
}

Result toText(const std::string &address, std::string *text, std::uint64_t maxBytes, const Limits &limits)
{
    text->clear();
    Sink sink;
    sink.text = text;
    sink.maxBytes = maxBytes;
    return run(address, sink, limits);
}

} // namespace Launcher::Fetch
