#include "knowledgecache.h"

namespace Launcher {

KnowledgeCache::KnowledgeCache(const std::string &folder)
    : m_path(folder.empty() ? std::string() : folder + "/kestreldl2.flags")
    , m_cache(m_path.empty() ? FlagCache() : FlagCache::load(m_path))
{
}

void KnowledgeCache::saveIfLearnt()
{
    if (m_learnt && !m_path.empty())
        m_cache.save(m_path);
    m_learnt = false;
}

} // namespace Launcher
