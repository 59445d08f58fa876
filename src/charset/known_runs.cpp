#include "charset/known_runs.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "charset/japanese_codes.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

// Words are read with their first byte lowest.
static_assert(std::endian::native == std::endian::little);

constexpr uint64_t kHighBits = 0x8080808080808080;

uint64_t LoadWord(const unsigned char* bytes) {
  uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// How many of a word's first bytes are ASCII.
size_t AsciiBytes(uint64_t word) {
  return static_cast<size_t>(std::countr_zero(word & kHighBits)) / 8;
}

// Where the next byte is read and where the next one is written.
struct Place {
  const unsigned char* in;
  const unsigned char* const end;
  char* out;
  const unsigned char* const start = in;
  char* const first = out;

  Place(std::string_view bytes, char* to)
      : in(reinterpret_cast<const unsigned char*>(bytes.data())), end(in + bytes.size()), out(to) {}

  size_t left() const { return static_cast<size_t>(end - in); }
  KnownRun Result() const {
    return {static_cast<size_t>(in - start), static_cast<size_t>(out - first)};
  }

  void CopyAscii() {
    while (left() >= 2 * sizeof(uint64_t)) {
      // Two words at once: most runs end within them, so how often this is done can be guessed.
      const uint64_t word = LoadWord(in);
      const uint64_t next = LoadWord(in + sizeof word);
      std::memcpy(out, &word, sizeof word);
      std::memcpy(out + sizeof word, &next, sizeof next);
      const size_t low = AsciiBytes(word);
      const size_t size = low + (low == sizeof word ? AsciiBytes(next) : 0);
      in += size;
      out += size;
      if (size < 2 * sizeof word) return;
    }
    while (in < end && *in < 0x80) *out++ = static_cast<char>(*in++);
  }

  // False when there is no such code.
  bool Put(unsigned code, size_t size) {
    if (code == 0) return false;
    if (code > 0xFF) *out++ = static_cast<char>(code >> 8);
    *out++ = static_cast<char>(code);
    in += size;
    return true;
  }
};

// Codes of the characters that Shift_JIS has as themselves: 0 also for one that is written by the
// code of another, which the converters take note of.
class ExactTable {
 public:
  static const ExactTable& Get() {
    static const ExactTable table;
    return table;
  }
  unsigned Encode(char32_t character) const { return codes_[character & 0xFFFF]; }

 private:
  ExactTable() {
    const CodePage932& code_page = CodePage932::Get();
    for (unsigned character = 0; character < codes_.size(); ++character) {
      const uint16_t code = code_page.Encode(character);
      codes_[character] = code_page.Decode(code) == character ? code : uint16_t{0};
    }
  }
  std::array<uint16_t, 0x10000> codes_{};
};

bool IsContinuation(unsigned byte) {
  return (byte & 0xC0) == 0x80;
}

// Shift_JIS codes of EUC-JP's two-byte codes; 0 where there is none.
class EucTable {
 public:
  EucTable() {
    const ExactTable& exact = ExactTable::Get();
    for (int row = 1; row <= kRows; ++row) {
      for (int cell = 1; cell <= kCells; ++cell) {
        codes_[static_cast<size_t>((row - 1) * kCells + cell - 1)] =
            static_cast<uint16_t>(exact.Encode(CharacterOfRowCell(row, cell)));
      }
    }
  }
  // Of two bytes from A1 to FE.
  unsigned At(unsigned lead, unsigned trail) const {
    return codes_[(lead - 0xA1) * kCells + trail - 0xA1];
  }

 private:
  std::array<uint16_t, size_t{kRows} * kCells> codes_{};
};

// The compiler's vectors: eight units, and the bytes that eight ASCII units become.
using Units = uint16_t __attribute__((vector_size(16)));
using Letters = uint8_t __attribute__((vector_size(8)));

template <ByteOrder kOrder>
Units LoadUnits(const unsigned char* bytes) {
  Units units;
  std::memcpy(&units, bytes, sizeof units);
  return kOrder == ByteOrder::kBigEndian ? units << 8 | units >> 8 : units;
}

bool AreAscii(Units units) {
  uint64_t halves[2];
  std::memcpy(halves, &units, sizeof halves);
  return ((halves[0] | halves[1]) & 0xFF80FF80FF80FF80) == 0;
}

// Takes a unit when Shift_JIS has it.
bool PutUnit(Place& place, unsigned unit, const ExactTable& table) {
  const unsigned code = table.Encode(unit);
  if (code == 0) return false;
  // The lead byte first. Arithmetic, because a branch for each character would be guessed wrong.
  const unsigned trails = (code + 0xFF00) >> 16;
  const auto bytes = static_cast<uint16_t>(code << 8 * trails | code >> 8 * trails);
  std::memcpy(place.out, &bytes, sizeof bytes);
  place.out += 1 + trails;
  place.in += 2;
  return true;
}

template <ByteOrder kOrder>
KnownRun ConvertKnownUtf16(std::string_view bytes, char* out) {
  const ExactTable& table = ExactTable::Get();
  Place place(bytes, out);
  while (place.left() >= sizeof(Units)) {
    const Units units = LoadUnits<kOrder>(place.in);
    if (AreAscii(units)) {
      const Letters letters = __builtin_convertvector(units, Letters);
      std::memcpy(place.out, &letters, sizeof letters);
      place.in += sizeof units;
      place.out += sizeof letters;
      continue;
    }
    for (size_t i = 0; i < sizeof units / 2; ++i) {
      if (!PutUnit(place, units[i], table)) return place.Result();
    }
  }
  while (place.left() >= 2) {
    const unsigned unit = kOrder == ByteOrder::kBigEndian ? place.in[0] * 256u + place.in[1]
                                                          : place.in[1] * 256u + place.in[0];
    if (!PutUnit(place, unit, table)) break;
  }
  return place.Result();
}

// Takes the sequences of three bytes from a place on that become two, which most of Japanese is.
void CopyThreeByteRun(Place& place, const ExactTable& table) {
  constexpr uint32_t kForm = 0x00C0C0F0;
  while (place.left() >= sizeof(uint32_t)) {
    uint32_t word = 0;
    std::memcpy(&word, place.in, sizeof word);
    if ((word & kForm) != 0x008080E0) return;
    const uint32_t character = (word & 0x0F) << 12 | (word >> 2 & 0x0FC0) | (word >> 16 & 0x3F);
    const unsigned code = table.Encode(character);
    if (code <= 0xFF || character < 0x800) return;
    place.out[0] = static_cast<char>(code >> 8);
    place.out[1] = static_cast<char>(code);
    place.in += 3;
    place.out += 2;
  }
}

}  // namespace

KnownRun ConvertKnownUtf8(std::string_view bytes, char* out) {
  const ExactTable& table = ExactTable::Get();
  Place place(bytes, out);
  while (true) {
    if (place.left() == 0) break;
    const unsigned char* const in = place.in;
    if (*in < 0x80) {
      place.CopyAscii();
      continue;
    }
    CopyThreeByteRun(place, table);
    if (place.in != in) continue;
    if ((*in & 0xF0) == 0xE0 && place.left() >= 3 && IsContinuation(in[1]) &&
        IsContinuation(in[2])) {
      const unsigned character = (in[0] & 0x0Fu) << 12 | (in[1] & 0x3Fu) << 6 | (in[2] & 0x3Fu);
      if (character < 0x800 || !place.Put(table.Encode(character), 3)) break;
    } else if (*in >= 0xC2 && *in <= 0xDF && place.left() >= 2 && IsContinuation(in[1])) {
      const unsigned character = (in[0] & 0x1Fu) << 6 | (in[1] & 0x3Fu);
      if (!place.Put(table.Encode(character), 2)) break;
    } else {
      break;
    }
  }
  return place.Result();
}

KnownRun ConvertKnownEuc(std::string_view bytes, char* out) {
  static const EucTable table;
  Place place(bytes, out);
  while (place.left() > 0) {
    const unsigned char* const in = place.in;
    if (*in < 0x80) {
      place.CopyAscii();
      continue;
    }
    if (place.left() < 2 || in[1] < 0xA1 || in[1] == 0xFF) break;
    const bool is_pair = *in >= 0xA1 && *in != 0xFF;
    const bool is_half_width = *in == 0x8E && in[1] <= 0xDF;
    const unsigned code = is_pair ? table.At(in[0], in[1]) : is_half_width ? in[1] : 0;
    if (!place.Put(code, 2)) break;
  }
  return place.Result();
}

KnownRun ConvertKnownUtf16Le(std::string_view bytes, char* out) {
  return ConvertKnownUtf16<ByteOrder::kLittleEndian>(bytes, out);
}

KnownRun ConvertKnownUtf16Be(std::string_view bytes, char* out) {
  return ConvertKnownUtf16<ByteOrder::kBigEndian>(bytes, out);
}

}  // namespace ledrix
