#include "listing/differing_stretches.h"

#include <algorithm>

namespace ledrix {
namespace {

// More edits than this are told as one: nobody reads them one by one.
constexpr int kMostEdits = 200;

constexpr uint16_t kFullWidthSpace = 0x8140;

// A character of a pair, and where it stands.
struct PairChar {
  uint16_t code = 0;
  size_t row = 0;
  size_t column = 0;
  size_t size = 0;           // bytes
  bool may_be_fill = false;  // a space where a double-byte character did not fit
};

bool IsSpace(const PairChar& character) {
  return character.code == ' ' || character.code == kFullWidthSpace;
}

void AppendPiece(SjisView text, size_t row, size_t column, std::vector<PairChar>& characters) {
  for (size_t at = 0; at < text.size();) {
    const size_t size = SjisCharSize(text, at);
    const unsigned code = size == 2 ? text.At(at) * 256u + text.At(at + 1) : text.At(at);
    characters.push_back({static_cast<uint16_t>(code), row, column + at, size});
    at += size;
  }
}

// The text of a side, its rows put together.
std::vector<PairChar> TextOfSide(const ListingShape& shape, std::span<const SjisView> rows,
                                 Side side) {
  std::vector<PairChar> characters;
  for (size_t row = 0; row < rows.size(); ++row) {
    const RowKind further = shape.style.vertical ? RowKind::kContinued : RowKind::kUnchanged;
    const RowKind kind = row == 0 ? RowKind::kChanged : further;
    const std::optional<SideColumns> columns = TextColumns(shape, kind, rows[row], side);
    if (!columns) continue;
    const SjisView text = rows[row].From(columns->begin).First(columns->end - columns->begin);
    const size_t before = characters.size();
    AppendPiece(text, row, columns->begin, characters);
    const bool begins_wide = characters.size() > before && characters[before].size == 2;
    if (before > 0 && begins_wide && characters[before - 1].code == ' ')
      characters[before - 1].may_be_fill = true;
  }
  // A side beside another one is filled up with spaces.
  while (!shape.style.vertical && !characters.empty() && characters.back().code == ' ')
    characters.pop_back();
  return characters;
}

// Leaves the characters that the compare looked at.
std::vector<PairChar> Compared(const ListingShape& shape, const std::vector<PairChar>& text,
                               bool with_fill) {
  std::vector<PairChar> compared;
  size_t column = 1;  // of the line, not of its rows
  for (const PairChar& character : text) {
    if (character.may_be_fill && !with_fill) continue;
    const size_t last = column + character.size - 1;
    const bool is_within = last >= static_cast<size_t>(shape.rules.first_column) &&
                           column <= static_cast<size_t>(shape.rules.last_column);
    column = last + 1;
    if (!is_within) continue;
    if (shape.rules.spaces == SpaceRule::kIgnoreAll && IsSpace(character)) continue;
    compared.push_back(character);
  }
  // What the last column cuts ends without spaces under this rule.
  if (shape.rules.spaces != SpaceRule::kCompare) {
    while (!compared.empty() && compared.back().code == ' ') compared.pop_back();
  }
  return compared;
}

std::vector<uint16_t> CodesOf(const std::vector<PairChar>& characters) {
  std::vector<uint16_t> codes;
  codes.reserve(characters.size());
  for (const PairChar& character : characters) codes.push_back(character.code);
  return codes;
}

void AppendStretches(std::span<const PairChar> characters, std::vector<Stretch>& stretches) {
  for (const PairChar& character : characters) {
    const size_t end = character.column + character.size;
    const bool goes_on = !stretches.empty() && stretches.back().row == character.row &&
                         stretches.back().end == character.column;
    if (goes_on) {
      stretches.back().end = end;
    } else {
      stretches.push_back({character.row, character.column, end});
    }
  }
}

std::vector<Stretch> StretchesOf(const ListingShape& shape,
                                 const PerSide<std::vector<PairChar>>& texts, bool with_fill) {
  const std::vector<PairChar> old_side = Compared(shape, texts[Side::kOld], with_fill);
  const std::vector<PairChar> new_side = Compared(shape, texts[Side::kNew], with_fill);
  std::vector<Stretch> stretches;
  for (const SequenceEdit& edit : FindShortestEdit(CodesOf(old_side), CodesOf(new_side))) {
    const std::span<const PairChar> olds(old_side);
    const std::span<const PairChar> news(new_side);
    AppendStretches(olds.subspan(edit.old_begin, edit.old_end - edit.old_begin), stretches);
    AppendStretches(news.subspan(edit.new_begin, edit.new_end - edit.new_begin), stretches);
  }
  std::sort(stretches.begin(), stretches.end(), [](const Stretch& a, const Stretch& b) {
    return a.row != b.row ? a.row < b.row : a.begin < b.begin;
  });
  return stretches;
}

// Walks from the start of both sequences along the fewest edits, and remembers each round.
class EditGraph {
 public:
  EditGraph(std::span<const uint16_t> old_side, std::span<const uint16_t> new_side)
      : old_(old_side), new_(new_side) {}

  // False when more than kMostEdits are needed.
  bool Search() {
    std::vector<int> reach(2 * kMostEdits + 3, 0);
    for (int edits = 0; edits <= kMostEdits; ++edits) {
      for (int diagonal = -edits; diagonal <= edits; diagonal += 2) {
        int x = FirstOf(reach, edits, diagonal);
        while (x < OldSize() && x - diagonal < NewSize() && old_[x] == new_[x - diagonal]) ++x;
        reach[Place(diagonal)] = x;
        if (x >= OldSize() && x - diagonal >= NewSize()) {
          rounds_.push_back(reach);
          return true;
        }
      }
      rounds_.push_back(reach);
    }
    return false;
  }

  // The edits, from the first to the last; those that touch are one.
  std::vector<SequenceEdit> Edits() const {
    std::vector<SequenceEdit> edits;
    int x = OldSize();
    int y = NewSize();
    for (int count = static_cast<int>(rounds_.size()) - 1; count > 0; --count) {
      const std::vector<int>& before = rounds_[static_cast<size_t>(count) - 1];
      const bool adds = TakesNew(before, count, x - y);
      const int from = x - y + (adds ? 1 : -1);
      const int from_x = before[Place(from)];
      const int from_y = from_x - from;
      const int to_x = adds ? from_x : from_x + 1;
      const int to_y = adds ? from_y + 1 : from_y;
      Put(edits, from_x, to_x, from_y, to_y);
      x = from_x;
      y = from_y;
    }
    std::reverse(edits.begin(), edits.end());
    return edits;
  }

 private:
  int OldSize() const { return static_cast<int>(old_.size()); }
  int NewSize() const { return static_cast<int>(new_.size()); }
  static size_t Place(int diagonal) { return static_cast<size_t>(diagonal) + kMostEdits + 1; }

  // True when the last edit on the way to a diagonal takes an element of the new side.
  static bool TakesNew(const std::vector<int>& reach, int edits, int diagonal) {
    if (diagonal == -edits) return true;
    return diagonal != edits && reach[Place(diagonal - 1)] < reach[Place(diagonal + 1)];
  }
  static int FirstOf(const std::vector<int>& reach, int edits, int diagonal) {
    if (edits == 0) return 0;
    return TakesNew(reach, edits, diagonal) ? reach[Place(diagonal + 1)]
                                            : reach[Place(diagonal - 1)] + 1;
  }
  // Puts an edit before those found so far.
  static void Put(std::vector<SequenceEdit>& edits, int old_begin, int old_end, int new_begin,
                  int new_end) {
    const SequenceEdit edit{static_cast<size_t>(old_begin), static_cast<size_t>(old_end),
                            static_cast<size_t>(new_begin), static_cast<size_t>(new_end)};
    if (!edits.empty() && edits.back().old_begin == edit.old_end &&
        edits.back().new_begin == edit.new_end) {
      edits.back().old_begin = edit.old_begin;
      edits.back().new_begin = edit.new_begin;
    } else {
      edits.push_back(edit);
    }
  }

  std::span<const uint16_t> old_;
  std::span<const uint16_t> new_;
  std::vector<std::vector<int>> rounds_;
};

}  // namespace

std::vector<SequenceEdit> FindShortestEdit(std::span<const uint16_t> old_side,
                                           std::span<const uint16_t> new_side) {
  const size_t shorter = std::min(old_side.size(), new_side.size());
  size_t head = 0;
  while (head < shorter && old_side[head] == new_side[head]) ++head;
  size_t tail = 0;
  while (tail < shorter - head &&
         old_side[old_side.size() - 1 - tail] == new_side[new_side.size() - 1 - tail]) {
    ++tail;
  }
  const size_t old_end = old_side.size() - tail;
  const size_t new_end = new_side.size() - tail;
  if (head == old_end && head == new_end) return {};
  EditGraph graph(old_side.subspan(head, old_end - head), new_side.subspan(head, new_end - head));
  if (!graph.Search()) return {{head, old_end, head, new_end}};
  std::vector<SequenceEdit> edits = graph.Edits();
  for (SequenceEdit& edit : edits) {
    for (size_t* const place : {&edit.old_begin, &edit.old_end, &edit.new_begin, &edit.new_end})
      *place += head;
  }
  return edits;
}

std::vector<Stretch> FindDifferences(const ListingShape& shape, std::span<const SjisView> rows) {
  const PerSide<std::vector<PairChar>> texts = {TextOfSide(shape, rows, Side::kOld),
                                                TextOfSide(shape, rows, Side::kNew)};
  std::vector<Stretch> stretches = StretchesOf(shape, texts, false);
  return stretches.empty() ? StretchesOf(shape, texts, true) : stretches;
}

}  // namespace ledrix
