// The exported data is a list of texts, four for each shadeop, see docs/generated-code.md. It is
// not trusted: a last text that does not end within the data is ignored, and so is a last group of
// less than four texts.
//
// Tested by tests/shadeops.

#include "host/QxShadeopNeeds.h"

#include <algorithm>

#include "machine/translate/QxShadeopLibraries.h"

void QxCheckShadeopNeeds(const SqxElfFile& file, const std::vector<std::string>& folders)
{
    const SqxElfFile::Bytes data = file.Contents(file.Find("QxShadeopNeeds"));
    std::vector<std::string> texts;
    for (auto begin = data.begin(), end = begin;
         (end = std::find(begin, data.end(), std::byte{0})) != data.end(); begin = end + 1)
        texts.emplace_back(reinterpret_cast<const char*>(data.data()) + (begin - data.begin()),
                           static_cast<std::size_t>(end - begin));
    constexpr std::size_t perShadeop = 4;
    std::vector<std::string> libraries;
    std::vector<SqxDSOFunction> functions;
    for (std::size_t i = 0; i + perShadeop <= texts.size(); i += perShadeop) {
        auto library = std::find(libraries.begin(), libraries.end(), texts[i]);
        if (library == libraries.end())
            library = libraries.insert(libraries.end(), texts[i]);
        SqxDSOFunction& function = functions.emplace_back();
        function.library = static_cast<std::size_t>(library - libraries.begin());
        function.method = texts[i + 1];
        function.init = texts[i + 2];
        function.cleanup = texts[i + 3];
    }
    const QxShadeopLibraries found(libraries, folders);
    for (const SqxDSOFunction& function : functions)
        static_cast<void>(found.DeclarationsOf(function));
}
