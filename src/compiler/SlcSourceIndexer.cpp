// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include "compiler/SlcSourceIndexer.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "compiler/SlcIndexWalker.h"

namespace {

using Trace = SlcPreprocessorTrace;

class Indexer {
public:
    Indexer(const Trace& trace, std::string_view text)
        : m_trace(trace),
          m_places(trace, text),
          m_names(m_index)
    {
    }

    [[nodiscard]] QxSourceIndex Run(SlcDefinitionsNode* tree, bool isStrict)
    {
        m_index.files = m_trace.Files();
        AddTokens();
        AddWholeSource();
        AddMacros();
        for (const Trace::Include& include : m_trace.Includes())
            m_index.includes.push_back({SlcIndexPlaces::Public(include.place), include.file});
        if (tree)
            SlcIndexWalker(m_index, m_names, m_places, isStrict)(tree);
        SortUses();
        return std::move(m_index);
    }

private:
    void AddTokens()
    {
        for (const Trace::Token& token : m_trace.Tokens())
            m_index.tokens.push_back({SlcIndexPlaces::Public(token.place),
                                      SlcIndexPlaces::Public(token.use), token.text, token.isBody});
    }

    void AddWholeSource()
    {
        QxIndexedBlock whole;
        whole.end = static_cast<unsigned>(m_index.tokens.size());
        m_index.blocks.push_back(std::move(whole));
    }

    void AddMacros()
    {
        for (const Trace::Macro& macro : m_trace.Macros()) {
            QxIndexedName name;
            name.kind = QxNameKind::Macro;
            name.name = macro.name;
            name.place = SlcIndexPlaces::Public(macro.place);
            name.range = SlcIndexPlaces::Between(name.place, SlcIndexPlaces::Public(macro.end));
            name.defaultValue = macro.body;
            name.macroParameters = macro.parameters;
            name.declaration = "#define " + macro.name;
            for (std::size_t i = 0; i < macro.parameters.size(); ++i)
                name.declaration += (i == 0 ? "(" : ", ") + macro.parameters[i];
            name.declaration += !macro.isFunction ? "" : macro.parameters.empty() ? "()" : ")";
            name.declaration += (macro.body.empty() ? "" : " ") + macro.body;
            const QxSourcePlace place = name.place;
            m_macros.push_back(m_names.Add(std::move(name)));
            AddUse(m_macros.back(), QxUseRole::Definition, place);
        }
        for (const Trace::MacroUse& use : m_trace.MacroUses())
            AddMacroUse(use);
    }

    void AddMacroUse(const Trace::MacroUse& use)
    {
        const int name = use.macro < 0 ? -1 : m_macros[static_cast<std::size_t>(use.macro)];
        const QxSourcePlace place = SlcIndexPlaces::Public(use.place);
        const bool isExpanded = use.kind == Trace::UseKind::Expanded;
        AddUse(name, isExpanded ? QxUseRole::Read : QxUseRole::Ask, place, &use);
        if (isExpanded && place.file >= 0)
            m_index.macroUses.push_back(
                {name, SlcIndexPlaces::Between(place, SlcIndexPlaces::Public(use.end)),
                 use.expansion});
    }

    void AddUse(int name, QxUseRole role, const QxSourcePlace& place,
                const Trace::MacroUse* traced = nullptr)
    {
        if (name < 0 || place.file < 0)
            return;
        QxIndexedUse use;
        use.name = name;
        use.role = role;
        use.place = place;
        use.isInMacro = traced && traced->isBody;
        if (use.isInMacro)
            use.macro = SlcIndexPlaces::Public(traced->outermost);
        m_index.uses.push_back(std::move(use));
    }

    /// Sorts the uses, removes those in no file, and keeps one of those with the same place and
    /// name: a file that is included twice, or a macro that is used twice, yields them repeatedly.
    void SortUses()
    {
        const auto key = [](const QxIndexedUse& use) {
            return std::make_tuple(use.place.file, use.place.line, use.place.column, use.name);
        };
        auto& uses = m_index.uses;
        std::erase_if(uses, [](const QxIndexedUse& use) { return use.place.file < 0; });
        std::stable_sort(uses.begin(), uses.end(),
                         [&](const auto& a, const auto& b) { return key(a) < key(b); });
        uses.erase(std::unique(uses.begin(), uses.end(),
                               [&](const auto& a, const auto& b) { return key(a) == key(b); }),
                   uses.end());
    }

    const Trace& m_trace;
    QxSourceIndex m_index;
    SlcIndexPlaces m_places;
    SlcIndexNames m_names;
    std::vector<int> m_macros;  // by their index in the trace
};

}  // namespace

std::shared_ptr<const QxSourceIndex> SlcMakeIndex(const Trace& trace, std::string_view text,
                                                  SlcDefinitionsNode* tree, bool isStrict)
{
    return std::make_shared<const QxSourceIndex>(Indexer(trace, text).Run(tree, isStrict));
}
