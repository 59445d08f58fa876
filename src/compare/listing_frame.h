// What stands above and below the body of a listing: the conditions and the two files of the
// compare, and its counts. Each comes in a box form and in a simple form of half-width text.
#pragma once

#include <string>

#include "platform/local_time.h"
#include "platform/output_file.h"
#include "run/listing_format.h"
#include "run/run_services.h"
#include "settings/compare_options.h"
#include "text/sjis_text.h"

namespace ledrix::modComp {

// A compared file as the header shows it.
struct ListedFile {
  SjisText path;
  SjisText stamp;  // last modification, 16 bytes
};

struct HeaderData {
  ListedFile old_file;
  ListedFile new_file;
  LocalTime run_time;
};

// Two lines of a file's cell.
struct FileCell {
  SjisText first;
  SjisText second;
};

// Lays a path and its stamp of 16 bytes into a cell of `width` bytes: both lines are exactly that
// wide, the second ends in the stamp, and what of the path fits on neither is not shown.
FileCell FormatFileCell(const ListedFile& file, size_t width);

// Each writes one form of the header. `options` are those that `format` was made of.
void WriteHeaderBox(OutputFile& listing, const CompareOptions& options, const ListingFormat& format,
                    const HeaderData& data);
void WriteSimpleHeader(OutputFile& listing, const CompareOptions& options,
                       const ListingFormat& format, const HeaderData& data);

// Each writes one form of the counts that close a listing.
void WriteSummaryBox(OutputFile& listing, const ListingFormat& format, const CompareCounts& counts);
void WriteSimpleSummary(OutputFile& listing, const ListingFormat& format,
                        const CompareCounts& counts);

}  // namespace ledrix::modComp
