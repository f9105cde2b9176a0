#include "db/ChunkPool.h"

#include <mutex>
#include <vector>

namespace db::ChunkPool {

namespace {

constexpr std::size_t kMostIdleChunks = 128;

struct Pool {
    Pool() { Idle.reserve(kMostIdleChunks); }
    std::mutex Lock;
    std::vector<char*> Idle;
};

// Lives to the end of the process: results held by globals are given back after main() returns.
Pool& ThePool() {
    static Pool* const pool = new Pool;
    return *pool;
}

}  // namespace

char* Take() {
    Pool& pool = ThePool();
    {
        const std::lock_guard guard(pool.Lock);
        if (!pool.Idle.empty()) {
            char* chunk = pool.Idle.back();
            pool.Idle.pop_back();
            return chunk;
        }
    }
    return new char[kChunkBytes];
}

void Return(char* chunk) noexcept {
    Pool& pool = ThePool();
    {
        const std::lock_guard guard(pool.Lock);
        if (pool.Idle.size() < kMostIdleChunks) {
            pool.Idle.push_back(chunk);
            return;
        }
    }
    delete[] chunk;
}

std::size_t IdleChunks() {
    Pool& pool = ThePool();
    const std::lock_guard guard(pool.Lock);
    return pool.Idle.size();
}

}  // namespace db::ChunkPool
