// Checks that three recipes of CONTRIBUTING.md name only existing files and folders, and that each
// name in a step occurs in a file that the step names, or in a file of a folder that it names.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path k_root = SLC_SOURCE_FOLDER;

std::string Read(const fs::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Returns the steps of the recipe with this heading: the numbered ones, and those after dashes,
/// which only some additions need.
std::vector<std::string> StepsOf(const std::string& heading)
{
    std::istringstream page(Read(k_root / "CONTRIBUTING.md"));
    static const std::regex begin(R"((\d+\.|-) .*)");
    std::vector<std::string> steps;
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## "))
            isInside = line == "## " + heading;
        else if (isInside && std::regex_match(line, begin))
            steps.push_back(line);
        else if (isInside && line.starts_with("  ") && !steps.empty())
            steps.back() += line;
    }
    return steps;
}

/// Returns the texts between backquotes, and the targets of links.
std::vector<std::string> QuotedIn(const std::string& step)
{
    static const std::regex quoted(R"(`([^`]+)`|\]\(([^)]+)\))");
    std::vector<std::string> words;
    for (std::sregex_iterator match(step.begin(), step.end(), quoted), end; match != end; ++match)
        words.push_back((*match)[1].matched ? (*match)[1].str() : (*match)[2].str());
    return words;
}

bool IsPath(const std::string& word)
{
    return word.find('/') != std::string::npos;
}

bool IsName(const std::string& word)
{
    return std::regex_match(word, std::regex(R"(\w+)"));
}

bool Mentions(const fs::path& file, const std::string& name)
{
    return std::regex_search(Read(file), std::regex("\\b" + name + "\\b"));
}

bool AnyHolds(const std::vector<fs::path>& places, const std::string& name)
{
    for (const fs::path& place : places) {
        if (!fs::is_directory(place)) {
            if (Mentions(place, name))
                return true;
            continue;
        }
        for (const auto& entry : fs::directory_iterator(place))
            if (entry.is_regular_file() && Mentions(entry.path(), name))
                return true;
    }
    return false;
}

}  // namespace

TEST(Recipes, NameExistingPlaces)
{
    for (const char* heading : {"A built-in function", "An instruction", "A pass"}) {
        const std::vector<std::string> steps = StepsOf(heading);
        EXPECT_GE(steps.size(), 4u) << heading;
        for (const std::string& step : steps) {
            const std::vector<std::string> words = QuotedIn(step);
            std::vector<fs::path> places;
            for (const std::string& word : words) {
                if (!IsPath(word))
                    continue;
                places.push_back(k_root / word);
                EXPECT_TRUE(fs::exists(places.back())) << heading << ": " << step;
            }
            for (const std::string& word : words)
                EXPECT_TRUE(!IsName(word) || AnyHolds(places, word)) << word << "\n"
                                                                     << heading << ": " << step;
        }
    }
}
