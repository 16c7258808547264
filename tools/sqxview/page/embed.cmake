# Writes the page's files into a source, so that the program needs none of them when it runs.
# usage: cmake -DFOLDER=... -DOUTPUT=... -P embed.cmake
set(rows "")
foreach(row IN ITEMS "/|index.html|text/html" "/page.css|page.css|text/css"
                     "/page.js|page.js|text/javascript")
    string(REPLACE "|" ";" row "${row}")
    list(GET row 0 path)
    list(GET row 1 file)
    list(GET row 2 type)
    file(READ "${FOLDER}/${file}" text)
    string(APPEND rows "    {\"${path}\", \"${type}; charset=utf-8\", R\"page(${text})page\"},\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"sqxview/SqxViewPage.h\"

namespace {

constexpr SqxViewPageFile k_files[] = {
${rows}};

}  // namespace

const SqxViewPageFile* SqxViewFindPageFile(std::string_view path)
{
    for (const SqxViewPageFile& file : k_files)
        if (file.path == path)
            return &file;
    return nullptr;
}
")
