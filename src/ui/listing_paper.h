// Listings on paper and in PDF files.
#pragma once

#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <functional>
#include <optional>
#include <string>

#include "listing/viewed_file.h"
#include "platform/native_path.h"

namespace ledrix {

// A page with the margins that listings have. Sizes are "A4", "B4" (that of Japan) and "A3";
// nothing for another name.
std::optional<QPageLayout> MakePageLayout(const std::string& size, bool portrait);

// Draws a file that is read whole, page by page, on a device whose page layout is set: a head with
// the name, the file's time and the page; the listing's header; its rows, as large as the paper's
// width lets them be in half points. `go_on` is asked before each page. Returns false when the
// device fails or `go_on` says so.
bool DrawOnPaper(ViewedFile& file, const std::string& name, QPagedPaintDevice& device,
                 const std::function<bool()>& go_on);

// Writes a PDF file; a failure leaves nothing of it. What stood there is replaced.
Status WritePdf(ViewedFile& file, const std::string& name, const NativePath& path,
                const QPageLayout& layout, const std::function<bool()>& go_on);

}  // namespace ledrix
