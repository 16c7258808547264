# Writes the files of the page into a C++ source, so that the program does not need them at run time.
# usage: cmake -DFOLDER=... -DOUTPUT=... -P embed.cmake
set(type_html "text/html")
set(type_css "text/css")
set(type_js "text/javascript")
file(GLOB files RELATIVE "${FOLDER}" "${FOLDER}/*.html" "${FOLDER}/*.css" "${FOLDER}/*.js")
set(rows "")
foreach(file IN LISTS files)
    string(REGEX REPLACE "^index\\.html$" "" path "${file}")
    string(REGEX REPLACE ".*\\." "" ending "${file}")
    file(READ "${FOLDER}/${file}" text)
    string(APPEND rows
           "    {\"/${path}\", \"${type_${ending}}; charset=utf-8\", R\"page(${text})page\"},\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"sqxview/SqxViewPage.h\"

namespace {

constexpr SqxViewPageFile k_files[] = {
${rows}};

}  // namespace

std::span<const SqxViewPageFile> SqxViewPageFiles()
{
    return k_files;
}
")
