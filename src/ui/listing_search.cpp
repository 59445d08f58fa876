#include "ui/listing_search.h"

#include <QElapsedTimer>
#include <algorithm>

namespace ledrix {
namespace {

constexpr qint64 kSliceMilliseconds = 15;

bool IsBefore(const FoundPlace& a, const FoundPlace& b) {
  return a.line != b.line ? a.line < b.line : a.columns.begin < b.columns.begin;
}

}  // namespace

ListingSearch::ListingSearch(std::function<void()> changed) : changed_(std::move(changed)) {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { SearchOn(); });
}

void ListingSearch::Start(ViewedFile& file, TextFinder finder) {
  Stop();
  file_ = &file;
  if (finder.is_empty()) return;
  finder_ = std::move(finder);
  is_done_ = false;
  timer_.start(0);
}

void ListingSearch::Stop() {
  timer_.stop();
  places_.clear();
  current_.reset();
  wish_.reset();
  next_ = 0;
  is_done_ = true;
}

size_t ListingSearch::number() const {
  if (!current_) return 0;
  const auto found = std::lower_bound(places_.begin(), places_.end(), *current_, IsBefore);
  return static_cast<size_t>(found - places_.begin()) + 1;
}

void ListingSearch::Go(bool forward, int64_t line) {
  wish_ = Wish{forward, line};
  Settle();
  changed_();
}

// Fulfils the wish, if what was searched so far suffices.
void ListingSearch::Settle() {
  if (!wish_) return;
  const bool forward = wish_->forward;
  const FoundPlace from = current_.value_or(FoundPlace{wish_->line, {}});
  auto place = places_.end();
  if (forward) {
    place = current_ ? std::upper_bound(places_.begin(), places_.end(), from, IsBefore)
                     : std::lower_bound(places_.begin(), places_.end(), from, IsBefore);
    if (place == places_.end() && !is_done_) return;
    if (place == places_.end()) place = places_.begin();
  } else {
    place = std::lower_bound(places_.begin(), places_.end(), from, IsBefore);
    if (place != places_.begin()) {
      // Nothing nearer can come from lines that are not searched yet, once they lie behind.
      if (!is_done_ && next_ <= from.line) return;
      --place;
    } else {
      if (!is_done_) return;
      place = places_.end();
      if (!places_.empty()) --place;
    }
  }
  wish_.reset();
  if (!places_.empty()) current_ = *place;
}

void ListingSearch::SearchOn() {
  QElapsedTimer slice;
  slice.start();
  // The last line may still grow.
  const int64_t end = file_->is_read() ? file_->lines() : file_->lines() - 1;
  while (slice.elapsed() < kSliceMilliseconds && next_ < end && !is_full()) {
    for (const FoundText& found : finder_->FindIn(file_->TextAt(next_)))
      places_.push_back({next_, found});
    ++next_;
  }
  is_done_ = is_full() || (next_ >= file_->lines() && file_->is_read());
  if (is_done_) timer_.stop();
  Settle();
  changed_();
}

}  // namespace ledrix
