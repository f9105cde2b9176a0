#include "embedded/WriteTurn.h"

#include <QFile>

namespace embedded {

void WriteTurn::Open() {
    sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
    m_memory.resize(size_t(system->szOsFile));
    if (!m_systemName)
        m_systemName = sqlite3_create_filename(m_name.toUtf8().constData(), "", "", 0, nullptr);
    auto* file = reinterpret_cast<sqlite3_file*>(m_memory.data());
    const int flags = SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    int given = 0;
    if (system->xOpen(system, m_systemName, file, flags, &given) == SQLITE_OK)
        m_file = file;
}

WriteTurn::~WriteTurn() {
    Leave();
    if (m_file)
        m_file->pMethods->xClose(m_file);
    sqlite3_free_filename(m_systemName);
}

bool WriteTurn::IsOthers() {
    if (!m_file && QFile::exists(m_name))
        Open();
    int held = 0;
    return m_file && !m_mine && m_file->pMethods->xCheckReservedLock(m_file, &held) == SQLITE_OK &&
           held != 0;
}

void WriteTurn::Take() {
    if (!m_file)
        Open();
    if (!m_file || m_mine)
        return;
    const sqlite3_io_methods& system = *m_file->pMethods;
    m_mine = system.xLock(m_file, SQLITE_LOCK_SHARED) == SQLITE_OK &&
             system.xLock(m_file, SQLITE_LOCK_RESERVED) == SQLITE_OK;
    if (!m_mine)
        system.xUnlock(m_file, SQLITE_LOCK_NONE);
}

void WriteTurn::Leave() {
    if (m_mine)
        m_file->pMethods->xUnlock(m_file, SQLITE_LOCK_NONE);
    m_mine = false;
}

}  // namespace embedded
