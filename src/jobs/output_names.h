// The names and the folder of a pair's outputs, and which file of a list counts as selected.
#pragma once

#include <string>
#include <string_view>

#include "run/file_list.h"
#include "run/job_record.h"
#include "settings/option_record.h"

namespace ledrix {

// The current entry's name when it is selected, otherwise the first selected one in list order,
// otherwise empty.
std::string SelectedFileName(const FileList& list);

// The pattern with every "*" replaced by `base`.
std::string FillPattern(std::string_view pattern, std::string_view base);

// The outputs of a pair. The merge source is always named after the old file.
OutputNames MakeOutputNames(const OptionRecord& options, const OutputChoices& choices,
                            const NativePath& old_path, const NativePath& new_path,
                            PathStyle style = kPlatformPathStyle);

// The outputs of a job's only pair: its request may say where the listing goes.
OutputNames MakeSingleOutputNames(const OptionRecord& options, const JobRecord& job);

}  // namespace ledrix
