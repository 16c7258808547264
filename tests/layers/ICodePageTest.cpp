// Checks that docs/icode.md names every instruction class, and that the operands in its tables,
// read and written, are those in src/icode/SlcICodeClasses.def.

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

std::string Read(const std::string& path)
{
    std::ifstream file(SLC_SOURCE_FOLDER "/" + path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::smatch> AllMatches(const std::string& text, const std::regex& pattern)
{
    return {std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()};
}

struct Operands {
    std::set<std::string> reads;
    std::set<std::string> writes;
    bool operator==(const Operands&) const = default;
};

std::string ToText(const Operands& operands)
{
    std::string text = "reads";
    for (const std::string& name : operands.reads)
        text += " " + name;
    text += ", writes";
    for (const std::string& name : operands.writes)
        text += " " + name;
    return text;
}

/// Returns the fields in a list such as `(code->m_source, code->m_form)`, without `m_`. `m_form`
/// becomes "condition", as on the page, since its only operand is the flag that selects points.
std::set<std::string> Fields(const std::string& list)
{
    static const std::regex field(R"(code->m_(\w+))");
    std::set<std::string> names;
    for (const std::smatch& match : AllMatches(list, field))
        names.insert(match[1] == "form" ? "condition" : match[1].str());
    return names;
}

/// Returns the operands of each class whose row in `classes` lists any, and those of
/// `SlcCallICode`, which no row lists.
std::map<std::string, Operands> OperandsOfRows(const std::string& classes)
{
    static const std::regex row(
        R"(\nSLC_ICODE_(?:OPERANDS|WORD)\((\w+),[^(]*(\(.*\)),\s+(\((?:[^()]|\([^()]*\))*\)))");
    std::map<std::string, Operands> all;
    for (const std::smatch& match : AllMatches(classes, row))
        all[match[1]] = {Fields(match[2]), Fields(match[3])};
    all["SlcCallICode"] = {{"condition", "args"}, {"args", "result"}};
    return all;
}

/// Returns the words in the cell `cell` of a table.
std::set<std::string> Words(const std::string& cell)
{
    static const std::regex word(R"(\w+)");
    std::set<std::string> words;
    for (const std::smatch& match : AllMatches(cell, word))
        words.insert(match[0]);
    return words;
}

/// Returns the operands of each class in the tables of the page.
std::map<std::string, Operands> OperandsOfPage(const std::string& page)
{
    static const std::regex row(R"(\n\| (`Slc[^|]*)\|[^|]*\|([^|]*)\|([^|]*)\|)");
    static const std::regex name(R"(`(Slc\w+ICode)`)");
    std::map<std::string, Operands> all;
    for (const std::smatch& match : AllMatches(page, row)) {
        const std::string names = match[1];
        for (const std::smatch& one : AllMatches(names, name))
            all[one[1]] = {Words(match[2]), Words(match[3])};
    }
    return all;
}

TEST(ICodePage, ListsOperandsAsTheWalkerDoes)
{
    const std::string page = Read("docs/icode.md");
    const auto shown = OperandsOfPage(page);
    ASSERT_GT(shown.size(), 20U);
    const std::string classes = Read("src/icode/SlcICodeClasses.def");
    const auto walked = OperandsOfRows(classes);
    ASSERT_GT(walked.size(), 30U);
    std::map<std::string, std::string> bases;
    for (const std::smatch& match :
         AllMatches(classes, std::regex(R"(\nSLC_ICODE_\w+\((\w+), (Slc\w+))")))
        bases[match[1]] = match[2];
    ASSERT_GT(bases.size(), 40U);

    for (const auto& [name, base] : bases) {
        EXPECT_NE(page.find('`' + name + '`'), std::string::npos) << name << " is not on the page";
        const auto row = shown.find(name);
        if (row == shown.end())
            continue;  // a base, which the page names only in the row of its derived classes
        std::string listed = name;
        while (!walked.contains(listed) && bases.contains(listed))
            listed = bases[listed];
        const auto found = walked.find(listed);
        const Operands expected = found == walked.end() ? Operands() : found->second;
        EXPECT_EQ(ToText(row->second), ToText(expected)) << name;
    }
}

}  // namespace
