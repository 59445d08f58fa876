#include "text/byte_search.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace ledrix {
namespace {

static_assert(std::endian::native == std::endian::little);

// Place of the lowest byte of a word that is not 0. REQUIRES: there is one.
size_t FirstByte(uint64_t word) {
  return static_cast<size_t>(std::countr_zero(word)) / 8;
}

// The compiler's vectors: sixteen bytes at once.
using Vector = signed char __attribute__((vector_size(16)));

Vector Load(std::string_view bytes, size_t place) {
  Vector vector;
  std::memcpy(&vector, bytes.data() + place, sizeof vector);
  return vector;
}

bool AreZero(Vector vector) {
  uint64_t halves[2];
  std::memcpy(halves, &vector, sizeof halves);
  return (halves[0] | halves[1]) == 0;
}

// Counts bytes that compared true.
class ByteCounter {
 public:
  void Add(Vector hits) {
    lanes_ -= hits;  // true is -1
    if (++added_ == kMost) Collect();
  }
  size_t Sum() {
    Collect();
    return sum_;
  }

 private:
  static constexpr int kMost = 127;  // before a lane could overflow

  void Collect() {
    for (size_t i = 0; i < sizeof lanes_; ++i) sum_ += static_cast<size_t>(lanes_[i]);
    lanes_ = Vector{};
    added_ = 0;
  }

  Vector lanes_{};
  int added_ = 0;
  size_t sum_ = 0;
};

}  // namespace

size_t CommonPrefixSize(std::string_view a, std::string_view b) {
  const size_t most = std::min(a.size(), b.size());
  size_t same = 0;
  // memcmp tells that a piece is equal, not where it differs; a smaller piece finds that.
  for (const size_t piece : {size_t{4096}, size_t{64}}) {
    while (most - same >= piece && std::memcmp(a.data() + same, b.data() + same, piece) == 0) {
      same += piece;
    }
  }
  while (same < most && a[same] == b[same]) ++same;
  return same;
}

size_t FindLastByte(std::string_view bytes, char wanted) {
  if (bytes.empty()) return std::string_view::npos;
  const void* const found = memrchr(bytes.data(), wanted, bytes.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<size_t>(static_cast<const char*>(found) - bytes.data());
}

size_t CountCrLfLines(std::string_view bytes) {
  if (bytes.empty()) return 0;
  if (bytes[0] == '\n' || bytes.back() != '\n') return std::string_view::npos;
  ByteCounter feeds;
  Vector apart{};    // a CR without LF or an LF without CR
  size_t place = 1;  // of the LF; a CR stands before it
  for (; place + sizeof(Vector) <= bytes.size(); place += sizeof(Vector)) {
    const auto is_feed = Load(bytes, place) == '\n';
    feeds.Add(is_feed);
    apart |= is_feed ^ (Load(bytes, place - 1) == '\r');
  }
  size_t count = feeds.Sum();
  bool all = AreZero(apart);
  for (; place < bytes.size(); ++place) {
    const bool is_feed = bytes[place] == '\n';
    count += is_feed ? 1 : 0;
    all = all && is_feed == (bytes[place - 1] == '\r');
  }
  return all ? count : std::string_view::npos;
}

size_t CountPairs(std::string_view bytes, char first, char second) {
  ByteCounter pairs;
  size_t place = 1;
  for (; place + sizeof(Vector) <= bytes.size(); place += sizeof(Vector)) {
    const auto is_second = Load(bytes, place) == static_cast<signed char>(second);
    pairs.Add(is_second & (Load(bytes, place - 1) == static_cast<signed char>(first)));
  }
  size_t count = pairs.Sum();
  for (; place < bytes.size(); ++place) {
    count += bytes[place] == second && bytes[place - 1] == first ? 1 : 0;
  }
  return count;
}

size_t FindEither(std::string_view bytes, char a, char b, size_t from) {
  size_t place = from;
  for (; place + sizeof(Vector) <= bytes.size(); place += sizeof(Vector)) {
    const Vector piece = Load(bytes, place);
    const auto hits =
        (piece == static_cast<signed char>(a)) | (piece == static_cast<signed char>(b));
    uint64_t halves[2];
    std::memcpy(halves, &hits, sizeof halves);
    if (halves[0] != 0) return place + FirstByte(halves[0]);
    if (halves[1] != 0) return place + sizeof halves[0] + FirstByte(halves[1]);
  }
  for (; place < bytes.size(); ++place) {
    if (bytes[place] == a || bytes[place] == b) return place;
  }
  return std::string_view::npos;
}

}  // namespace ledrix
