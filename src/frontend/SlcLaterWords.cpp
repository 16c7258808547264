// Words of later revisions of the language. Compiling a source for a later revision usually fails
// at the first such word, often in a header that the author has never read.
//
// Tested by tests/frontend/SlcParseAdviceTest.cpp.

#include "frontend/SlcLaterWords.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

struct Word {
    std::string_view word;
    bool opensDefinition;  // the word begins a definition with a block
    std::string_view advice;
};

// clang-format off
//   word        definition  advice
constexpr Word k_words[] = {
    {"class",    true,       "classes belong to a later revision of the language"},
    {"public",   false,      "classes belong to a later revision of the language"},
    {"private",  false,      "classes belong to a later revision of the language"},
    {"struct",   true,       "structures belong to a later revision of the language"},
    {"shader",   false,      "shader objects belong to a later revision of the language"},
};
// clang-format on

constexpr std::string_view k_functions[] = {
    "arraylength", "bake", "bake3d", "caustic", "gather",  "getlights", "getshader",  "getshaders",
    "photonmap",   "pop",  "push",   "rayinfo", "reserve", "resize",    "subsurface", "texture3d",
};

/// Returns the row of the word; null if the table has none.
const Word* Find(std::string_view word)
{
    const auto* const found = std::find_if(std::begin(k_words), std::end(k_words),
                                           [&](const Word& row) { return row.word == word; });
    return found == std::end(k_words) ? nullptr : found;
}

}  // namespace

std::string_view SlcAdviceOnLaterWord(std::string_view word)
{
    const Word* const found = Find(word);
    return found ? found->advice : std::string_view();
}

bool SlcOpensLaterDefinition(std::string_view word)
{
    const Word* const found = Find(word);
    return found && found->opensDefinition;
}

std::string SlcAdviceOnLaterFunction(std::string_view name)
{
    if (std::find(std::begin(k_functions), std::end(k_functions), name) == std::end(k_functions))
        return {};
    return "'" + std::string(name) + "' belongs to a later revision of the language";
}
