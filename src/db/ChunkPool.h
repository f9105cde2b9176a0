#pragma once

#include <cstddef>

/// Memory for rows, in pieces of one size that results hand on to each other: fresh memory costs
/// a page fault every few rows, a piece used before costs none.
namespace db::ChunkPool {

constexpr std::size_t kChunkBytes = 256 * 1024;

/// A chunk of kChunkBytes; its content is undefined.
char* Take();
/// Gives a chunk back for the next result. Past 32 MB of idle chunks it goes back to the system.
void Return(char* chunk) noexcept;
/// Idle chunks, waiting to be taken.
std::size_t IdleChunks();

}  // namespace db::ChunkPool
