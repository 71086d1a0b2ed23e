#include "fetch.h"

#include "transferpace.h"
#include "writeall.h"

#include <curl/curl.h>

#include <cerrno>
#include <cstring>

#include <arpa/inet.h>
#include <unistd.h>

namespace Launcher::Fetch {

namespace {

constexpr long connectSeconds = 30;

struct Sink
{
    int fd = -1;
    std::string *text = nullptr;
    std::uint64_t written = 0;
    std::uint64_t maxBytes = 0;
    bool tooLarge = false;
    bool writeFailed = false;
};

std::size_t receive(char *data, std::size_t size, std::size_t count, void *context)
{
    Sink &sink = *static_cast<Sink *>(context);
    const std::size_t bytes = size * count;
    if (sink.written + bytes > sink.maxBytes) {
        sink.tooLarge = true;
        return 0;
    }
    if (sink.text) {
        sink.text->append(data, bytes);
    } else if (!writeAll(sink.fd, data, bytes)) {
        sink.writeFailed = true;
        return 0;
    }
    sink.written += bytes;
    return bytes;
}

// Plain HTTP is for the tests' local feeds: only a scheme of "http" and a
// host that is a loopback address qualify ("http://127.evil.example/" does
// not).
bool isLoopbackHttp(const std::string &address)
{
    CURLU *url = curl_url();
    if (!url)
        return false;
    char *scheme = nullptr;
    char *host = nullptr;
    bool loopback = false;
    if (curl_url_set(url, CURLUPART_URL, address.c_str(), 0) == CURLUE_OK
        && curl_url_get(url, CURLUPART_SCHEME, &scheme, 0) == CURLUE_OK
        && curl_url_get(url, CURLUPART_HOST, &host, 0) == CURLUE_OK && std::strcmp(scheme, "http") == 0) {
        in_addr ipv4;
        loopback = std::strcmp(host, "localhost") == 0 || std::strcmp(host, "[::1]") == 0
                   || (::inet_pton(AF_INET, host, &ipv4) == 1 && (ntohl(ipv4.s_addr) >> 24) == 127);
    }
    curl_free(scheme);
    curl_free(host);
    curl_url_cleanup(url);
    return loopback;
}

// curl ends a transfer past either limit with the same code: the time
// spent tells them apart, and a connection never made is neither. curl
// starts its deadline's clock a little before the one it reports the total
// time by, so the deadline is taken as reached a second early.
std::string timeoutProblem(CURL *curl, const Fetch::Limits &limits, const char *errorText)
{
    constexpr curl_off_t microseconds = 1000000;
    curl_off_t connected = 0;
    curl_off_t total = 0;
    curl_easy_getinfo(curl, CURLINFO_CONNECT_TIME_T, &connected);
    curl_easy_getinfo(curl, CURLINFO_TOTAL_TIME_T, &total);
    if (connected == 0)
        return errorText;
    if (total + microseconds >= curl_off_t(limits.deadlineSeconds) * microseconds)
        return TransferPace::pastDeadline(limits);
    return TransferPace::stalled(limits);
}

Result run(const std::string &address, Sink &sink, const Fetch::Limits &limits)
{
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    if (!ready)
        return {false, "the download library cannot start"};
    CURL *curl = curl_easy_init();
    if (!curl)
        return {false, "the download library cannot start"};

    char errorText[CURL_ERROR_SIZE] = {};
    const char *protocols = isLoopbackHttp(address) ? "http" : "https";
    curl_easy_setopt(curl, CURLOPT_URL, address.c_str());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, protocols);
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "https");
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, 10L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, connectSeconds);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, long(limits.deadlineSeconds));
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, long(limits.minimumBytesPerSecond));
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, long(limits.rateWindowSeconds));
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(curl, CURLOPT_USERAGENT, "kestreldl2");
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, errorText);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, receive);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &sink);

    const CURLcode code = curl_easy_perform(curl);
    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    const std::string timedOut
        = code == CURLE_OPERATION_TIMEDOUT ? timeoutProblem(curl, limits, errorText) : std::string();
    curl_easy_cleanup(curl);

    if (sink.tooLarge)
        return {false, "larger than expected"};
    if (sink.writeFailed)
        return {false, std::string("cannot write the download: ") + std::strerror(errno)};
    if (code == CURLE_PARTIAL_FILE)
        return {false, "download cut short"};
    if (code == CURLE_UNSUPPORTED_PROTOCOL)
        return {false, "not an HTTPS address: " + address};
    if (!timedOut.empty())
        return {false, timedOut};
    if (code != CURLE_OK)
        return {false, errorText[0] ? std::string(errorText) : std::string(curl_easy_strerror(code))};
    if (status != 200)
        return {false, "HTTP " + std::to_string(status)};
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
