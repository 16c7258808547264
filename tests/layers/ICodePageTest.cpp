// The page of the intermediate code names every instruction class, and says which operands of each
// it reads and writes as the walker over operands does.

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

std::string WithoutPrefix(const std::string& field)
{
    return field.starts_with("m_") ? field.substr(2) : field;
}

/// By class, from the text of its `Case`.
std::map<std::string, Operands> OperandsOfWalker()
{
    static const std::regex caseHead(R"(SlcOperandWalker::Case\(SlcPtr<(\w+)> code\)\n\{)");
    static const std::regex loop(R"(SlcOperand& (\w+) : code->(m_\w+))");
    static const std::regex access(
        R"(\b(Read|Write|ReadWrite)(Condition)?(IfSet)?\((?:code->)?(?:m_form\.)?(\w+))");
    const std::string text = Read("src/icode/SlcOperandWalker.cpp");
    std::map<std::string, Operands> all;
    for (const std::smatch& head : AllMatches(text, caseHead)) {
        const auto begin = static_cast<std::size_t>(head.position());
        const std::string body = text.substr(begin, text.find("\n}", begin) - begin);
        std::map<std::string, std::string> fieldOf;
        for (const std::smatch& match : AllMatches(body, loop))
            fieldOf[match[1]] = match[2];
        Operands& operands = all[head[1]];
        for (const std::smatch& match : AllMatches(body, access)) {
            const std::string name = match[4];
            const auto field = fieldOf.find(name);
            const std::string plain = WithoutPrefix(field == fieldOf.end() ? name : field->second);
            if (match[1] != "Write")
                operands.reads.insert(plain);
            if (match[1] != "Read")
                operands.writes.insert(plain);
        }
    }
    return all;
}

/// The words of a cell of operands.
std::set<std::string> Words(const std::string& cell)
{
    static const std::regex word(R"(\w+)");
    std::set<std::string> words;
    for (const std::smatch& match : AllMatches(cell, word))
        words.insert(match[0]);
    return words;
}

/// By class, from the tables of the page.
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
    const auto walked = OperandsOfWalker();
    ASSERT_GT(walked.size(), 20U);
    const std::string classes = Read("src/icode/SlcICodeClasses.def");
    std::map<std::string, std::string> bases;
    for (const std::smatch& match :
         AllMatches(classes, std::regex(R"(\nSLC_ICODE_CLASS\((\w+), (\w+))")))
        bases[match[1]] = match[2];
    ASSERT_GT(bases.size(), 40U);

    for (const auto& [name, base] : bases) {
        EXPECT_NE(page.find('`' + name + '`'), std::string::npos) << name << " is not on the page";
        const auto row = shown.find(name);
        if (row == shown.end())
            continue;  // a base, named with what derives from it
        std::string listed = name;
        while (!walked.contains(listed) && bases.contains(listed))
            listed = bases[listed];
        const auto found = walked.find(listed);
        const Operands expected = found == walked.end() ? Operands() : found->second;
        EXPECT_EQ(ToText(row->second), ToText(expected)) << name;
    }
}

}  // namespace
