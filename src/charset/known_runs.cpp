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
    while (left() >= sizeof(uint64_t)) {
      const uint64_t word = LoadWord(in);
      std::memcpy(out, &word, sizeof word);
      const auto size = static_cast<size_t>(std::countr_zero(word & kHighBits)) / 8;
      in += size;
      out += size;
      if (size < sizeof word) return;
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

bool IsContinuation(unsigned byte) {
  return (byte & 0xC0) == 0x80;
}

// Shift_JIS codes of EUC-JP's two-byte codes; 0 where there is none.
class EucTable {
 public:
  EucTable() {
    const CodePage932& code_page = CodePage932::Get();
    for (int row = 1; row <= kRows; ++row) {
      for (int cell = 1; cell <= kCells; ++cell) {
        codes_[static_cast<size_t>((row - 1) * kCells + cell - 1)] =
            code_page.Encode(CharacterOfRowCell(row, cell));
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

// Takes the ASCII units from a place on.
template <ByteOrder kOrder>
void CopyAsciiUnits(Place& place) {
  constexpr bool kBig = kOrder == ByteOrder::kBigEndian;
  while (place.left() >= sizeof(uint64_t)) {
    uint64_t word = LoadWord(place.in);
    const uint64_t others = word & (kBig ? 0x80FF80FF80FF80FF : 0xFF80FF80FF80FF80);
    const auto units = static_cast<size_t>(std::countr_zero(others)) / 16;
    if (units == 0) return;
    word = (kBig ? word >> 8 : word) & 0x00FF00FF00FF00FF;
    word = (word | word >> 8) & 0x0000FFFF0000FFFF;
    const auto packed = static_cast<uint32_t>(word | word >> 16);
    std::memcpy(place.out, &packed, sizeof packed);
    place.in += 2 * units;
    place.out += units;
    if (units < sizeof packed) return;
  }
}

template <ByteOrder kOrder>
KnownRun ConvertKnownUtf16(std::string_view bytes, char* out) {
  const CodePage932& code_page = CodePage932::Get();
  Place place(bytes, out);
  while (place.left() >= 2) {
    const unsigned unit = kOrder == ByteOrder::kBigEndian ? place.in[0] * 256u + place.in[1]
                                                          : place.in[1] * 256u + place.in[0];
    if (unit >= 0x80) {
      if (!place.Put(code_page.Encode(unit), 2)) break;
    } else if (place.left() >= sizeof(uint64_t)) {
      CopyAsciiUnits<kOrder>(place);
    } else {
      *place.out++ = static_cast<char>(unit);
      place.in += 2;
    }
  }
  return place.Result();
}

// Takes the sequences of three bytes from a place on that become two, which most of Japanese is.
void CopyThreeByteRun(Place& place, const CodePage932& code_page) {
  constexpr uint32_t kForm = 0x00C0C0F0;
  while (place.left() >= sizeof(uint32_t)) {
    uint32_t word = 0;
    std::memcpy(&word, place.in, sizeof word);
    if ((word & kForm) != 0x008080E0) return;
    const uint32_t character = (word & 0x0F) << 12 | (word >> 2 & 0x0FC0) | (word >> 16 & 0x3F);
    const unsigned code = code_page.Encode(character);
    if (code <= 0xFF || character < 0x800) return;
    place.out[0] = static_cast<char>(code >> 8);
    place.out[1] = static_cast<char>(code);
    place.in += 3;
    place.out += 2;
  }
}

}  // namespace

KnownRun ConvertKnownUtf8(std::string_view bytes, char* out) {
  const CodePage932& code_page = CodePage932::Get();
  Place place(bytes, out);
  while (true) {
    if (place.left() == 0) break;
    const unsigned char* const in = place.in;
    if (*in < 0x80) {
      place.CopyAscii();
      continue;
    }
    CopyThreeByteRun(place, code_page);
    if (place.in != in) continue;
    if ((*in & 0xF0) == 0xE0 && place.left() >= 3 && IsContinuation(in[1]) &&
        IsContinuation(in[2])) {
      const unsigned character = (in[0] & 0x0Fu) << 12 | (in[1] & 0x3Fu) << 6 | (in[2] & 0x3Fu);
      if (character < 0x800 || !place.Put(code_page.Encode(character), 3)) break;
    } else if (*in >= 0xC2 && *in <= 0xDF && place.left() >= 2 && IsContinuation(in[1])) {
      const unsigned character = (in[0] & 0x1Fu) << 6 | (in[1] & 0x3Fu);
      if (!place.Put(code_page.Encode(character), 2)) break;
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
