#include "text/text_arena.h"

#include <algorithm>

namespace ledrix {

void TextArena::AddChunk(size_t size) {
  const size_t chunk_size = std::max(size, kChunkSize);
  chunks_.push_back({std::make_unique_for_overwrite<char[]>(chunk_size), chunk_size});
  Use(chunks_.back());
}

void TextArena::Use(const Chunk& chunk) {
  next_ = chunk.bytes.get();
  left_ = chunk.size;
}

void TextArena::Reset() {
  if (chunks_.empty()) return;
  chunks_.resize(chunks_.front().size == kChunkSize ? 1 : 0);
  if (chunks_.empty()) {
    next_ = nullptr;
    left_ = 0;
  } else {
    Use(chunks_.front());
  }
}

}  // namespace ledrix
