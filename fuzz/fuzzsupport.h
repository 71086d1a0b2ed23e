#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

// What every fuzz target shares. Each target is built with fuzzsupport.cpp,
// which provides libFuzzer's LLVMFuzzerInitialize: it points HOME and the XDG
// folders at a private temporary folder (the shared video record opens the
// settings file in the per-user data folder, which must not be the real
// user's) and silences the log, whose lines would only slow the run down.
namespace Fuzz {

// The input as the application reads the tool's output and pasted text:
// UTF-8, invalid sequences and NUL characters included.
QString text(const uint8_t *data, size_t size);

// Reports a broken promise of the code under test and aborts, which libFuzzer
// records as a crash together with the input that caused it.
[[noreturn]] void fail(const char *what, const QString &input);

} // namespace Fuzz

// Checks a property the fuzzed function documents; the input goes into the
// report so the finding can be read without a debugger.
#define FUZZ_CHECK(condition, input)                                              \
    do {                                                                          \
        if (!(condition))                                                         \
            Fuzz::fail("check failed: " #condition, (input));                     \
    } while (false)
