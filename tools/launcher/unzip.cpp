#include "unzip.h"

#include "platform.h"
#include "writeall.h"

#include <archive.h>
#include <archive_entry.h>

#include <memory>

namespace Launcher {

namespace {

std::string archiveProblem(archive *reader)
{
    const char *text = archive_error_string(reader);
    return text ? std::string(text) : std::string("unreadable archive");
}

std::string tooLarge(const std::string &entryName, std::uint64_t maxBytes)
{
    return entryName + " unpacks to more than " + std::to_string(maxBytes) + " bytes (zip bomb)";
}

bool extractFrom(int archiveFd, const std::string &entryName, int fd, std::string *problem, std::uint64_t maxBytes)
{
    std::unique_ptr<archive, decltype(&archive_read_free)> reader(archive_read_new(), archive_read_free);
    if (!reader) {
        *problem = "the archive library cannot start";
        return false;
    }
    archive_read_support_format_zip(reader.get());
    if (archive_read_open_fd(reader.get(), archiveFd, 64 * 1024) != ARCHIVE_OK) {
        *problem = archiveProblem(reader.get());
        return false;
    }

    archive_entry *entry = nullptr;
    for (;;) {
        const int status = archive_read_next_header(reader.get(), &entry);
        if (status == ARCHIVE_EOF) {
            *problem = "no " + entryName + " in the archive";
            return false;
        }
        if (status != ARCHIVE_OK && status != ARCHIVE_WARN) {
            *problem = archiveProblem(reader.get());
            return false;
        }
        const char *name = archive_entry_pathname(entry);
        if (name && entryName == name && archive_entry_filetype(entry) == AE_IFREG)
            break;
    }

    if (archive_entry_size_is_set(entry) && std::uint64_t(archive_entry_size(entry)) > maxBytes) {
        *problem = tooLarge(entryName, maxBytes);
        return false;
    }
    // The header's size is the archive's word only: what is written counts.
    std::uint64_t written = 0;
    char buffer[64 * 1024];
    for (;;) {
        const la_ssize_t n = archive_read_data(reader.get(), buffer, sizeof buffer);
        if (n == 0)
            return true;
        if (n < 0) {
            *problem = archiveProblem(reader.get());
            return false;
        }
        written += std::uint64_t(n);
        if (written > maxBytes) {
            *problem = tooLarge(entryName, maxBytes);
            return false;
        }
        if (!writeAll(fd, buffer, std::size_t(n))) {
            *problem = "cannot write the unpacked file: " + lastErrorText();
            return false;
        }
    }
}

} // namespace

bool extractZipEntry(const std::string &archivePath, const std::string &entryName, int fd, std::string *problem,
                     std::uint64_t maxBytes)
{
    // Opened here rather than by name, which the library would read in the
    // system's code page on Windows.
    const int archiveFd = openForReading(archivePath);
    if (archiveFd < 0) {
        *problem = "cannot open the archive: " + lastErrorText();
        return false;
    }
    const bool extracted = extractFrom(archiveFd, entryName, fd, problem, maxBytes);
    closeFile(archiveFd);
    return extracted;
}

} // namespace Launcher
