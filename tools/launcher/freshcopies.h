#pragma once

#include <string>

namespace Launcher {

// The application copies the launcher and ffmpeg into its data folder once
// and never replaces them, so after an upgrade of the application its data
// folder would keep last year's launcher and an ffmpeg built against
// libraries the system no longer has. The launcher therefore takes fresh
// copies itself: each file beside the application (appFolder) that differs
// from the data folder's copy replaces it in one step. A source already
// compared is remembered by its identity, so that a run costs a look at two
// file stamps. Returns true when the launcher itself was replaced: the
// caller then runs the new one in its place.
bool refreshCopies(const std::string &folder, const std::string &appFolder);

} // namespace Launcher
