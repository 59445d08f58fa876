// Memory for texts derived from lines, handed out piece by piece and given back all at once.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ledrix {

class TextArena {
 public:
  // `size` bytes that stay in place until Reset(); the content is undefined.
  char* Allocate(size_t size) {
    if (size > left_) AddChunk(size);
    left_ -= size;
    return std::exchange(next_, next_ + size);
  }

  // Gives back everything. Keeps one chunk of the usual size for the next round.
  void Reset();

 private:
  static constexpr size_t kChunkSize = size_t{1} << 16;

  struct Chunk {
    std::unique_ptr<char[]> bytes;
    size_t size = 0;
  };
  void AddChunk(size_t size);
  void Use(const Chunk& chunk);

  std::vector<Chunk> chunks_;
  char* next_ = nullptr;
  size_t left_ = 0;
};

}  // namespace ledrix
