// A stand-in for yt-dlp.exe in the Windows launcher tests: a plain Win32
// program, linked statically, so that it runs alone in a data folder.
//
// "--version" prints FAKE_VERSION (or "2026.11.20"). Any other run writes
// each of its arguments on a line of its own to standard output, in UTF-8,
// then "fake yt-dlp: done" to standard error, and then does what
// FAKE_BEHAVIOUR says:
//   exit:N     ends with exit code N (the default is 0)
//   crash      ends as an access violation does (0xC0000005)
//   bytes      first writes FAKE_BYTES_FILE's bytes to standard output
//   tree       starts a copy of itself that waits for ever, writes both
//              process ids to FAKE_PID_FILE, and waits for ever too
// "--wait" (used by "tree") only waits.

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

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

} // namespace

int wmain(int argc, wchar_t *argv[])
{
    const HANDLE out = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE err = GetStdHandle(STD_ERROR_HANDLE);
    if (argc == 2 && std::wcscmp(argv[1], L"--wait") == 0)
        waitForEver();
    if (argc == 2 && std::wcscmp(argv[1], L"--version") == 0) {
        const std::wstring version = variable(L"FAKE_VERSION");
        writeOut(out, (version.empty() ? std::string("2026.11.20") : utf8(version.c_str())) + "\n");
        return 0;
    }

    const std::wstring behaviour = variable(L"FAKE_BEHAVIOUR");
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
