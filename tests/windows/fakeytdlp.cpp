// A stand-in for yt-dlp.exe in the Windows launcher tests: a plain Win32
// program, linked statically, so that it runs alone in a data folder.
//
// "--version" prints FAKE_VERSION (or "2026.11.20"); copied under a name
// with "deno" in it, it answers as a Deno new enough for the tool. Any other run writes
// each of its arguments on a line of its own to standard output, in UTF-8,
// then "fake yt-dlp: done" to standard error, and then does what
// FAKE_BEHAVIOUR says:
//   exit:N     ends with exit code N (the default is 0)
//   crash      ends as an access violation does (0xC0000005)
//   bytes      first writes FAKE_BYTES_FILE's bytes to standard output
//   tree       starts a copy of itself that waits for ever, writes both
//              process ids to FAKE_PID_FILE, and waits for ever too
// "--wait" (used by "tree") only waits.
//
// FAKE_BEHAVIOUR=demo plays yt-dlp itself for the application's three runs,
// from the files in FAKE_DEMO_FOLDER (see playDemo() below), so that the
// Windows build can show a whole download under Wine with no network.

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <string>
#include <utility>

namespace {

void writeOut(HANDLE stream, const std::string &bytes)
{
    DWORD written = 0;
    WriteFile(stream, bytes.data(), DWORD(bytes.size()), &written, nullptr);
}

std::string utf8(const wchar_t *text)
{
    const int length = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string result(length > 0 ? std::size_t(length - 1) : 0, '\0');
    if (length > 1)
        WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), length, nullptr, nullptr);
    return result;
}

std::wstring variable(const wchar_t *name)
{
    const wchar_t *value = _wgetenv(name);
    return value ? value : L"";
}

std::string fileBytes(const std::wstring &path)
{
    std::string bytes;
    FILE *file = _wfopen(path.c_str(), L"rb");
    if (!file)
        return bytes;
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, n);
    std::fclose(file);
    return bytes;
}

[[noreturn]] void waitForEver()
{
    for (;;)
        Sleep(INFINITE);
}

// Starts a copy of this program with "--wait" and notes both ids.
void startTree()
{
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring commandLine = L"\"" + std::wstring(self) + L"\" --wait";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    if (!CreateProcessW(self, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &child))
        ExitProcess(70);
    FILE *file = _wfopen(variable(L"FAKE_PID_FILE").c_str(), L"wb");
    if (file) {
        std::fprintf(file, "%lu %lu\n", GetCurrentProcessId(), child.dwProcessId);
        std::fclose(file);
    }
}

// --- demo --------------------------------------------------------------

// What a run of the demo is asked for: the values of the flags the
// application gives, and the address, yt-dlp's only positional argument.
struct DemoRun
{
    bool metadata = false;
    bool formats = false;
    std::string format;
    std::string path;
    std::string outputTemplate;
    std::string mergeFormat;
    std::string target;
    // --print-to-file's file: the video's information document goes there.
    std::string documentOut;
    // --load-info-json's file: the video comes from there.
    std::string documentIn;
    std::size_t trimTo = 0;
    bool windowsNames = false;
};

// The flags that take their value as the next argument, among those the
// launcher and the application give.
bool takesValue(const std::string &flag)
{
    static const char *const flags[] = {"--encoding", "--js-runtimes", "--retries", "--concurrent-fragments",
                                        "--output-na-placeholder", "--trim-filenames", "--progress-delta",
                                        "--merge-output-format", "--format", "--ffmpeg-location", "--path",
                                        "--output"};
    for (const char *name : flags) {
        if (flag == name)
            return true;
    }
    return false;
}

DemoRun readDemoRun(int argc, wchar_t *argv[])
{
    DemoRun run;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = utf8(argv[i]);
        if (argument.empty() || argument[0] != '-') {
            run.target = argument;
            continue;
        }
        if (argument == "--print-to-file" && i + 2 < argc) {
            run.documentOut = utf8(argv[i + 2]);
            i += 2;
            continue;
        }
        // A document in place of the address: what was extracted before.
        if (argument == "--load-info-json" && i + 1 < argc) {
            run.documentIn = utf8(argv[++i]);
            continue;
        }
        if (argument == "--get-title")
            run.metadata = true;
        else if (argument == "--list-formats")
            run.formats = true;
        else if (argument == "--windows-filenames")
            run.windowsNames = true;
        if (!takesValue(argument) || i + 1 >= argc)
            continue;
        const std::string value = utf8(argv[++i]);
        if (argument == "--format")
            run.format = value;
        else if (argument == "--path")
            run.path = value;
        else if (argument == "--output")
            run.outputTemplate = value;
        else if (argument == "--merge-output-format")
            run.mergeFormat = value;
        else if (argument == "--trim-filenames")
            run.trimTo = std::strtoul(value.c_str(), nullptr, 10);
    }
    return run;
}

std::wstring wide(const std::string &text)
{
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, nullptr, 0);
    std::wstring result(length > 0 ? std::size_t(length - 1) : 0, L'\0');
    if (length > 1)
        MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, result.data(), length);
    return result;
}

std::string demoFile(const char *name)
{
    return fileBytes(variable(L"FAKE_DEMO_FOLDER") + L"\\" + wide(name));
}

std::string firstLine(const std::string &text)
{
    std::string line = text.substr(0, text.find('\n'));
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return line;
}

// The video identifier of a bare identifier or of a watch address.
std::string videoId(const std::string &target)
{
    const std::size_t query = target.find("v=");
    if (query == std::string::npos)
        return target.substr(target.find_last_of('/') + 1);
    return target.substr(query + 2, target.find('&', query) - query - 2);
}

// The RESOLUTION column of the listing's row for format id: the third
// blank-separated word ("1920x1080"), or the words "audio only".
std::string resolutionOf(const std::string &listing, const std::string &id)
{
    std::size_t at = 0;
    while (at < listing.size()) {
        std::size_t end = listing.find('\n', at);
        if (end == std::string::npos)
            end = listing.size();
        const std::string line = listing.substr(at, end - at);
        at = end + 1;
        std::size_t word = 0;
        std::string words[4];
        for (std::size_t i = 0; i < line.size() && word < 4;) {
            while (i < line.size() && line[i] == ' ')
                ++i;
            const std::size_t start = i;
            while (i < line.size() && line[i] != ' ' && line[i] != '\r')
                ++i;
            if (i > start)
                words[word++] = line.substr(start, i - start);
        }
        if (words[0] != id)
            continue;
        return words[2] == "audio" && words[3] == "only" ? "audio only" : words[2];
    }
    return "NA";
}

// --windows-filenames: the characters Windows refuses in a name become their
// full-width look-alikes, as yt-dlp does.
std::string windowsSafe(const std::string &name)
{
    std::string safe;
    for (const char c : name) {
        if (std::string(":\"/?*<|>").find(c) == std::string::npos) {
            safe += c;
            continue;
        }
        const wchar_t fullWidth[2] = {wchar_t(0xFF00 + (c - 0x20)), L'\0'};
        safe += utf8(fullWidth);
    }
    return safe;
}

// The characters of a UTF-8 text, cut to at most count of them.
std::string firstCharacters(const std::string &text, std::size_t count)
{
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((text[i] & 0xC0) != 0x80 && characters++ == count)
            return text.substr(0, i);
    }
    return text;
}

std::string expandTemplate(const DemoRun &run, const std::string &title, const std::string &resolution)
{
    const std::string ext = run.mergeFormat.empty() ? "mp4" : run.mergeFormat;
    const std::pair<const char *, std::string> fields[] = {
        {"%(title)s", title}, {"%(resolution)s", resolution}, {"%(id)s", videoId(run.target)}, {"%(ext)s", ext}};
    std::string name = run.outputTemplate;
    for (const auto &[field, value] : fields) {
        for (std::size_t at = name.find(field); at != std::string::npos; at = name.find(field, at + value.size()))
            name.replace(at, std::strlen(field), value);
    }
    if (run.windowsNames)
        name = windowsSafe(name);
    // --trim-filenames cuts the name before its extension.
    const std::size_t dot = name.rfind('.');
    if (run.trimTo > 0 && dot != std::string::npos)
        name = firstCharacters(name.substr(0, dot), run.trimTo) + name.substr(dot);
    return name;
}

// Writes the transcript of a download the way yt-dlp does: every progress
// update is a write of its own that begins with a carriage return, so the
// application sees the updates arrive one by one. "{path}" in the
// transcript stands for the output folder.
void replayProgress(HANDLE out, std::string transcript, const std::string &folder)
{
    const std::string token = "{path}";
    for (std::size_t at = transcript.find(token); at != std::string::npos;
         at = transcript.find(token, at + folder.size()))
        transcript.replace(at, token.size(), folder);
    constexpr DWORD pauseMs = 150;
    std::size_t start = 0;
    while (start < transcript.size()) {
        const std::size_t next = transcript.find('\r', start + 1);
        const std::size_t end = next == std::string::npos ? transcript.size() : next;
        writeOut(out, transcript.substr(start, end - start));
        start = end;
        if (start < transcript.size())
            Sleep(pauseMs);
    }
}

// The demo's files in FAKE_DEMO_FOLDER (a title run asked for the
// information document writes a small one; a run given one plays the same):
//   title.txt     what "--get-title --get-duration" prints
//   formats.txt   what "--list-formats" prints
//   progress.txt  what a download prints, "{path}" for the output folder
//   video.mp4     the merged file a download leaves
// A run with no address ends with yt-dlp's usage error, which is what the
// launcher's flag probes look for.
// The video identifier a document written by a title run of the demo names.
std::string documentVideo(const std::string &path)
{
    const std::string text = fileBytes(wide(path));
    const std::string key = "{\"id\": \"";
    if (text.compare(0, key.size(), key) != 0)
        return std::string();
    const std::size_t end = text.find('"', key.size());
    return end == std::string::npos ? std::string() : text.substr(key.size(), end - key.size());
}

int playDemo(int argc, wchar_t *argv[], HANDLE out, HANDLE err)
{
    DemoRun run = readDemoRun(argc, argv);
    if (!run.documentIn.empty())
        run.target = documentVideo(run.documentIn);
    if (run.target.empty()) {
        writeOut(err, "Usage: yt-dlp [OPTIONS] URL [URL...]\n\n"
                      "yt-dlp: error: You must provide at least one URL.\n"
                      "Type yt-dlp --help to see a list of all options.\n");
        return 2;
    }
    if (run.metadata) {
        writeOut(out, demoFile("title.txt"));
        if (!run.documentOut.empty()) {
            FILE *document = _wfopen(wide(run.documentOut).c_str(), L"ab");
            if (document) {
                const std::string text = "{\"id\": \"" + videoId(run.target) + "\", \"extractor\": \"youtube\"}\n";
                std::fputs(text.c_str(), document);
                std::fclose(document);
            }
        }
        return 0;
    }
    if (run.formats) {
        writeOut(out, demoFile("formats.txt"));
        return 0;
    }
    if (run.format.empty() || run.path.empty() || run.outputTemplate.empty()) {
        writeOut(err, "ERROR: fake yt-dlp: not a run the demo plays\n");
        return 1;
    }

    const std::string formatId = run.format.substr(0, run.format.find_first_of("+/["));
    const std::string name
        = expandTemplate(run, firstLine(demoFile("title.txt")), resolutionOf(demoFile("formats.txt"), formatId));
    replayProgress(out, demoFile("progress.txt"), run.path);
    const std::wstring source = variable(L"FAKE_DEMO_FOLDER") + L"\\video.mp4";
    const std::wstring target = wide(run.path) + L"\\" + wide(name);
    if (!CopyFileW(source.c_str(), target.c_str(), FALSE)) {
        writeOut(err, "ERROR: unable to write " + run.path + "\\" + name + " (error "
                          + std::to_string(GetLastError()) + ")\n");
        return 1;
    }
    return 0;
}

// Whether this copy is the runtime's stand-in, by its own file name, which
// names deno also while the launcher tries it under a temporary name.
bool isDeno()
{
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring name(path, length);
    name = name.substr(name.find_last_of(L"\\/") + 1);
    for (wchar_t &c : name)
        c = wchar_t(towlower(c));
    return name.find(L"deno") != std::wstring::npos;
}

} // namespace

int wmain(int argc, wchar_t *argv[])
{
    const HANDLE out = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE err = GetStdHandle(STD_ERROR_HANDLE);
    if (argc == 2 && std::wcscmp(argv[1], L"--wait") == 0)
        waitForEver();
    if (argc == 2 && std::wcscmp(argv[1], L"--version") == 0 && isDeno()) {
        writeOut(out, "deno 2.5.6 (stable, release, x86_64-pc-windows-msvc)\n");
        return 0;
    }
    if (argc == 2 && std::wcscmp(argv[1], L"--version") == 0) {
        const std::wstring version = variable(L"FAKE_VERSION");
        writeOut(out, (version.empty() ? std::string("2026.11.20") : utf8(version.c_str())) + "\n");
        return 0;
    }

    const std::wstring behaviour = variable(L"FAKE_BEHAVIOUR");
    if (behaviour == L"demo")
        return playDemo(argc, argv, out, err);
    if (behaviour == L"bytes")
        writeOut(out, fileBytes(variable(L"FAKE_BYTES_FILE")));
    for (int i = 1; i < argc; ++i)
        writeOut(out, utf8(argv[i]) + "\n");
    writeOut(err, "fake yt-dlp: done\n");

    if (behaviour == L"crash")
        TerminateProcess(GetCurrentProcess(), 0xC0000005);
    if (behaviour == L"tree") {
        startTree();
        waitForEver();
    }
    if (behaviour.compare(0, 5, L"exit:") == 0)
        return std::wcstol(behaviour.c_str() + 5, nullptr, 10);
    return 0;
}
