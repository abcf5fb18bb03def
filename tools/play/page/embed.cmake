# Puts the page's style and scripts into its HTML and writes that as a C++ source: OUTPUT, from FOLDER.
cmake_policy(VERSION 3.23)

function(insert name file)
  file(READ "${FOLDER}/${file}" text)
  string(REPLACE "@${name}@" "${text}" page "${page}")
  set(page "${page}" PARENT_SCOPE)
endfunction()

file(READ "${FOLDER}/page.html" page)
insert(STYLE page.css)
insert(DATA_SCRIPT data.js)
insert(CHARTS_SCRIPT charts.js)
insert(PAGE_SCRIPT page.js)

# Compilers limit the length of a literal, so the page becomes many short ones.
string(LENGTH "${page}" length)
set(pieces)
set(at 0)
while(at LESS length)
  string(SUBSTRING "${page}" ${at} 4000 piece)
  string(APPEND pieces "R\"page-text(${piece})page-text\"\n")
  math(EXPR at "${at} + 4000")
endwhile()
file(WRITE "${OUTPUT}" "#include \"tools/play/page/Page.h\"

namespace Steinberg {
namespace Vst {
namespace play {

extern const char* const kPageTemplate;
const char* const kPageTemplate =
${pieces};

} // namespace play
} // namespace Vst
} // namespace Steinberg
")
