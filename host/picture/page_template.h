/// \file
/// The page as it is without a drawing.
#pragma once

#include <string_view>

namespace host {

/// The page's source, put together from the files in host/picture/page when the project is configured.
/// kPageDataMark stands in it where the data go.
extern const std::string_view kPageTemplate;

/// Where the drawing's data go: inside an element of the type application/json.
inline constexpr std::string_view kPageDataMark = "@PAGE_DATA@";

} // namespace host
