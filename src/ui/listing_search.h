// A search through a file of any size: in slices, while the window lives on.
#pragma once

#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "listing/viewed_file.h"
#include "ui/listing_view.h"

namespace ledrix {

class ListingSearch {
 public:
  // `changed` is called when more was found, when all was searched, and when the place is another.
  explicit ListingSearch(std::function<void()> changed);

  // Searches a file from its beginning. An empty finder ends the search.
  void Start(ViewedFile& file, TextFinder finder);
  void Stop();

  // Goes to the next place behind the current one, or before it; round the end. `line` is where
  // the search begins when there is no current one.
  void Go(bool forward, int64_t line);
  const std::optional<FoundPlace>& current() const { return current_; }
  // Which of the places it is, from 1; 0 without one.
  size_t number() const;
  size_t count() const { return places_.size(); }
  // All was searched.
  bool is_done() const { return is_done_; }
  // The search ended early: there are more places than anybody goes through.
  bool is_full() const { return places_.size() >= kMostPlaces; }

 private:
  static constexpr size_t kMostPlaces = 1000000;

  void SearchOn();
  void Settle();

  ViewedFile* file_ = nullptr;
  std::optional<TextFinder> finder_;
  std::function<void()> changed_;
  QTimer timer_;
  int64_t next_ = 0;  // the line to be searched next
  bool is_done_ = true;
  std::vector<FoundPlace> places_;  // in their order
  std::optional<FoundPlace> current_;
  // A place that is wanted and not found yet.
  struct Wish {
    bool forward;
    int64_t line;
  };
  std::optional<Wish> wish_;
};

}  // namespace ledrix
