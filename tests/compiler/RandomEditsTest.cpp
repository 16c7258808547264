// Makes random edits of 20 examples, and undoes some. Checks that a text that is restored has the
// same index as before, that another thread, used for some texts, builds the same index, and that
// each use is at the place of its name in the text. With SLC_ALL_SLIPS=1 there are ten thousand
// edits and undos, with a random seed that is printed.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "compiler/QxCompiler.h"
#include "compiler/QxSourceIndex.h"

namespace {

namespace fs = std::filesystem;

std::string Text(const QxSourceRange& range)
{
    std::ostringstream out;
    out << range.file << ':' << range.line << ':' << range.column << '-' << range.endLine << ':'
        << range.endColumn;
    return out.str();
}

/// Returns the names, uses, calls, blocks and macro uses of an index, with most of their fields.
std::string Text(const QxSourceIndex& index)
{
    std::ostringstream out;
    for (const QxIndexedName& n : index.names)
        out << static_cast<int>(n.kind) << ' ' << n.declaration << ' ' << n.type << ' '
            << static_cast<int>(n.detail) << static_cast<int>(n.inferred)
            << static_cast<int>(n.storage) << ' ' << Text(n.range) << ' ' << n.owner << ' '
            << n.defaultValue << '\n';
    for (const QxIndexedUse& u : index.uses)
        out << u.name << ' ' << static_cast<int>(u.role) << ' ' << u.place.file << ':'
            << u.place.line << ':' << u.place.column << '+' << u.place.length << ' ' << u.type
            << ' ' << static_cast<int>(u.detail) << u.isInMacro << '\n';
    for (const QxIndexedCall& c : index.calls)
        out << c.name << ' ' << c.text << ' ' << Text(c.range) << ' ' << c.arguments.size() << '\n';
    for (const QxIndexedBlock& b : index.blocks)
        out << Text(b.range) << ' ' << b.parent << ' ' << b.names.size() << '\n';
    for (const QxIndexedMacroUse& m : index.macroUses)
        out << m.name << ' ' << Text(m.range) << ' ' << m.expansion << '\n';
    return out.str();
}

std::shared_ptr<const QxSourceIndex> IndexOf(const std::string& path, const std::string& text)
{
    QxCompileOptions options;
    options.makesIndex = true;
    options.output = QxCompileOptions::Output::Nothing;
    options.folders = {SLC_EXAMPLES_FOLDER "/include"};
    return QxCompileText(path, text, options).index;
}

void ExpectNamesAtTheirPlaces(const QxSourceIndex& index, const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    for (const QxIndexedUse& use : index.uses) {
        if (use.place.file != 0)
            continue;
        ASSERT_LE(static_cast<std::size_t>(use.place.line), lines.size());
        const std::string& line = lines[static_cast<std::size_t>(use.place.line) - 1];
        const QxIndexedName& name = index.names[static_cast<std::size_t>(use.name)];
        std::string wanted = name.kind == QxNameKind::Space ? '"' + name.name + '"' : name.name;
        // A backslash at the end of the line may split the name.
        if (line.ends_with('\\'))
            wanted.resize(std::min(wanted.size(), static_cast<std::size_t>(use.place.length)));
        EXPECT_EQ(line.substr(static_cast<std::size_t>(use.place.column) - 1,
                              static_cast<std::size_t>(use.place.length)),
                  wanted)
            << text;
    }
}

class Editor {
public:
    Editor(std::string path, unsigned seed) : m_path(std::move(path)), m_random(seed)
    {
        std::ifstream file(m_path);
        m_states.push_back({{std::istreambuf_iterator<char>(file), {}}, ""});
        m_states.back().index = Text(*IndexOf(m_path, m_states.back().text));
    }

    void Step()
    {
        // The number of states is limited, since a text with too many faults has nothing to index.
        if (m_states.size() > 1 && (m_random() % 2 == 0 || m_states.size() > 6))
            m_states.pop_back();
        else
            m_states.push_back({Edited(m_states.back().text), ""});
        State& state = m_states.back();
        const auto index = IndexOf(m_path, state.text);
        const std::string text = Text(*index);
        if (!state.index.empty()) {
            EXPECT_EQ(text, state.index) << state.text;
        }
        state.index = text;
        ExpectNamesAtTheirPlaces(*index, state.text);
        if (m_random() % 8 != 0)
            return;
        std::string other;
        std::thread([&] { other = Text(*IndexOf(m_path, state.text)); }).join();
        EXPECT_EQ(other, text) << state.text;
    }

private:
    struct State {
        std::string text;
        std::string index;
    };

    std::string Edited(std::string text)
    {
        static const char* const pieces[] = {"x",
                                             "(",
                                             ")",
                                             "{",
                                             "}",
                                             ";",
                                             ",",
                                             "\"",
                                             " ",
                                             "\n",
                                             "= 1;",
                                             "float x = s;",
                                             "noise(P)",
                                             "if (s > t) ",
                                             "#define A B\n",
                                             "#include \"patterns.h\"\n",
                                             "A(",
                                             "color \"hsv\" ",
                                             "float f(float a) { return a; }\n",
                                             "/*",
                                             "extern ",
                                             "Ci += ",
                                             "\\\n",
                                             "$"};
        const std::size_t at = m_random() % (text.size() + 1);
        if (m_random() % 2 == 0)
            return text.erase(at, m_random() % 12);
        return text.insert(at, pieces[m_random() % std::size(pieces)]);
    }

    std::string m_path;
    std::mt19937 m_random;
    std::vector<State> m_states;
};

TEST(RandomEdits, RestoreTheIndexAndKeepNamesAtTheirPlaces)
{
    const bool isLong = std::getenv("SLC_ALL_SLIPS") != nullptr;
    const unsigned seed = isLong ? std::random_device()() : 1;
    if (isLong)
        std::cout << "seed " << seed << '\n';
    std::vector<std::string> paths;
    for (const auto& entry : fs::directory_iterator(SLC_EXAMPLES_FOLDER))
        if (entry.path().extension() == ".sl")
            paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    paths.resize(20);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        Editor editor(paths[i], seed + static_cast<unsigned>(i));
        for (int step = 0; step < (isLong ? 500 : 15); ++step)
            editor.Step();
    }
}

}  // namespace
