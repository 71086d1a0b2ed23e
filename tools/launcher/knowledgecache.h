#pragma once

#include "flagcache.h"

#include <string>

namespace Launcher {

// What the launcher learnt about installed programs (the flags the tool
// knows, the versions of runtimes and ffmpeg), kept in "kestreldl2.flags"
// beside it because asking costs a program start. When the file cannot be
// read or written, the programs are simply asked again next time.
class KnowledgeCache
{
public:
    explicit KnowledgeCache(const std::string &folder);

    bool canKeep() const { return !m_path.empty(); }
    FlagCache &cache() { return m_cache; }
    void learnt() { m_learnt = true; }
    bool *learntFlag() { return &m_learnt; }

    // Called before the launcher hands over to the tool: it ends with
    // _exit(), which runs no destructor.
    void saveIfLearnt();

private:
    std::string m_path;
    FlagCache m_cache;
    bool m_learnt = false;
};

} // namespace Launcher
