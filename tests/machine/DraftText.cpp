// Words are separated by blanks. Each of the marks ; : ( ) is a word by itself.

#include "machine/DraftText.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <stdexcept>

namespace {

using Step = QxCodeStep;

/// Primitives that only the machine has are written in lower case.
constexpr std::string_view k_own = "MACHINE_";

std::string WordOf(SqxPrimitive primitive)
{
    std::string word(SqxPrimitiveName(primitive));
    if (!word.starts_with(k_own))
        return word;
    word.erase(0, k_own.size());
    for (char& c : word)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return word;
}

SqxPrimitive PrimitiveOf(std::string word)
{
    if (!word.empty() && std::islower(static_cast<unsigned char>(word[0])) != 0) {
        for (char& c : word)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        word.insert(0, k_own);
    }
    const auto primitive = SqxPrimitiveNamed(word);
    if (!primitive)
        throw std::runtime_error("There is no primitive " + word);
    return *primitive;
}

std::vector<std::string> WordsOf(std::string_view text)
{
    std::string spaced;
    for (const char c : text)
        spaced += std::string_view(";:()").find(c) == std::string_view::npos
                      ? std::string(1, c)
                      : std::string{' ', c, ' '};
    std::istringstream words(spaced);
    std::vector<std::string> result;
    for (std::string word; words >> word;)
        result.insert(result.begin(), word);
    return result;
}

QxStorage StorageOf(const std::string& name)
{
    using Kind = QxStorage::Kind;
    if (std::isdigit(static_cast<unsigned char>(name[0])) != 0)
        return {Kind::Constant, QxStored::Number};
    const bool uniform = name[0] == 'g' || name[0] == 'u';
    const QxStored stored = name[0] == 'f' || name[0] == 'g'   ? QxStored::Flag
                            : name[0] == 'c' || name[0] == 'C' ? QxStored::Triple
                                                               : QxStored::Number;
    const bool predefined = name[0] == 'C' || name[0] == 'S';
    return {predefined ? Kind::Predefined : Kind::Local, stored, !uniform};
}

}  // namespace

DraftText::DraftText(std::string_view text)
    : m_variables(m_empty, m_code),
      m_writer(QxKernelTable::For(false), m_variables),
      m_block(m_writer.Block()),
      m_words(WordsOf(text))
{
    while (!m_words.empty())
        ReadItem();
    m_writer.Add(Step::Stop);
    for (const auto& [index, label] : m_jumps) {
        if (m_labels.count(label) == 0)
            throw std::runtime_error("No label " + label);
        m_block.drafts[index].code.target = m_labels.at(label);
    }
    if (!m_open.empty())
        throw std::runtime_error("Brackets are open at the end");
}

std::string DraftText::Next()
{
    if (m_words.empty())
        throw std::runtime_error("The text ends too early");
    std::string word = std::move(m_words.back());
    m_words.pop_back();
    return word;
}

void DraftText::Expect(std::string_view word)
{
    if (const std::string next = Next(); next != word)
        throw std::runtime_error("'" + next + "' in place of '" + std::string(word) + "'");
}

void DraftText::ReadItem()
{
    const std::string word = Next();
    if (!m_words.empty() && m_words.back() == ":") {
        m_words.pop_back();
        m_labels[word] = static_cast<std::uint32_t>(m_block.drafts.size());
    } else if (word == "{" || word == "each") {
        if (word == "each")
            Expect("{");
        m_open.push_back(m_block.drafts.size());
        m_writer.Add(Step::BeginParallel).code.pointwise = word == "each";
    } else if (word == "}") {
        Close(Step::EndParallel);
    } else if (word == ")") {
        Close(Step::EndIf);
    } else if (word == "goto") {
        ReadJump(Step::Goto);
    } else if (word == "lights") {
        ReadJump(Step::BeginLights);
    } else if (word == "again") {
        ReadJump(Step::EndLights);
    } else if (word == "if") {
        const bool wanted = m_words.empty() || m_words.back() != "not";
        if (!wanted)
            m_words.pop_back();
        const bool copy = !m_words.empty() && m_words.back() == "copy";
        if (copy)
            m_words.pop_back();
        const QxOperand flag = Operand(Next());
        if (const std::string mark = Next(); mark == "goto") {
            ReadJump(wanted ? Step::GotoIfTrue : Step::GotoIfFalse);
        } else {
            m_open.push_back(m_block.drafts.size());
            m_writer.Add(wanted ? Step::IfTrue : Step::IfFalse).code.copyFlag = copy;
        }
        m_block.drafts.back().code.flag = flag;
    } else {
        ReadInstruction(word);
    }
}

void DraftText::ReadJump(Step step)
{
    m_jumps.emplace_back(m_block.drafts.size(), Next());
    m_writer.Add(step);
    Expect(";");
}

void DraftText::Close(Step step)
{
    if (m_open.empty())
        throw std::runtime_error("A bracket closes nothing");
    m_writer.Add(step);
    m_block.drafts[m_open.back()].code.target = static_cast<std::uint32_t>(m_block.drafts.size());
    m_open.pop_back();
}

void DraftText::ReadInstruction(const std::string& first)
{
    static const std::map<std::string, Step> forms = {{"once", Step::Once},
                                                      {"grid", Step::Grid},
                                                      {"at", Step::GridIf},
                                                      {"whole", Step::GridIf},
                                                      {"all", Step::Kernel}};
    const auto form = forms.find(first);
    QxDraft& draft = m_writer.Add(form == forms.end() ? Step::Kernel : form->second);
    if (draft.code.step == Step::GridIf) {
        draft.code.flag = Operand(Next());
        draft.code.whole = first == "whole";
    }
    std::vector<std::string> words;
    if (form == forms.end())
        words.push_back(first);
    while (words.empty() || words.back() != ";")
        words.push_back(Next());
    words.pop_back();
    const auto equal = std::find(words.begin(), words.end(), "=");
    auto word = words.begin();
    if (equal != words.end()) {
        for (; word != equal; ++word)
            m_writer.AddOperand(Operand(*word), 'w');
        ++word;
    }
    if (word == words.end())
        throw std::runtime_error("An instruction has no primitive");
    draft.row = &m_writer.RowOf(PrimitiveOf(*word));
    while (++word != words.end())
        m_writer.AddOperand(Operand(word->substr((*word)[0] == '&' ? 1 : 0)),
                            (*word)[0] == '&' ? 'm' : 'r');
    m_writer.ChooseKernels(draft);
    if (first == "all")
        draft.code.masked = draft.code.all;
}

QxOperand DraftText::Operand(const std::string& name)
{
    return m_variables.OperandOf(Variable(name));
}

std::uint32_t DraftText::Variable(const std::string& name)
{
    const auto [known, isNew] =
        m_names.emplace(name, static_cast<std::uint32_t>(m_code.variables.size()));
    if (isNew)
        m_code.variables.push_back(StorageOf(name));
    return known->second;
}

std::string DraftText::NameOf(std::uint32_t variable) const
{
    const auto name = std::find_if(m_names.begin(), m_names.end(),
                                   [&](const auto& entry) { return entry.second == variable; });
    if (name != m_names.end())
        return name->first;
    // Variables that a pass has added have no name.
    const auto first = m_code.variables.begin();
    return '~' + std::to_string(std::count_if(first, first + variable, [](const auto& storage) {
               return storage.kind == QxStorage::Kind::Strip;
           }));
}

std::string DraftText::Label(std::uint32_t target) const
{
    std::set<std::uint32_t> targets;
    for (const QxDraft& draft : m_block.drafts)
        if (QxIsJump(draft.code.step))
            targets.insert(draft.code.target);
    const auto at = targets.find(target);
    return at == targets.end()
               ? ""
               : std::string(1, static_cast<char>('A' + std::distance(targets.begin(), at)));
}

std::string DraftText::Condition(const QxCode& code) const
{
    const bool inverted = code.step == Step::IfFalse || code.step == Step::GotoIfFalse;
    return std::string("if ") + (inverted ? "not " : "") + (code.copyFlag ? "copy " : "") +
           NameOf(code.flag.variable) + ' ';
}

std::string DraftText::PrintDraft(std::size_t index) const
{
    const QxDraft& draft = m_block.drafts[index];
    const QxCode& code = draft.code;
    std::string text;
    switch (code.step) {
    case Step::Kernel:
        if (draft.row->shaped && code.masked == code.all)
            text = "all ";
        break;
    case Step::Once:
        text = "once ";
        break;
    case Step::Grid:
        text = "grid ";
        break;
    case Step::GridIf:
        text = (code.whole ? "whole " : "at ") + NameOf(code.flag.variable) + ' ';
        break;
    case Step::BeginParallel:
        text = code.pointwise ? "each {" : "{";
        for (std::uint32_t k = 0; k < code.count; ++k)
            text += NameOf(m_block.operands[draft.first + k].variable);
        return text + (code.number > 0 ? "/" + std::to_string(code.number) : "");
    case Step::EndParallel:
        return "}";
    case Step::IfTrue:
    case Step::IfFalse:
        return Condition(code) + '(';
    case Step::EndIf:
        return ")";
    case Step::Where:
        return "where " + NameOf(code.flag.variable) + " (";
    case Step::Goto:
        return "goto " + Label(code.target) + ';';
    case Step::GotoIfTrue:
    case Step::GotoIfFalse:
        return Condition(code) + "goto " + Label(code.target) + ';';
    case Step::BeginLights:
        return "lights " + Label(code.target) + ';';
    case Step::EndLights:
        return "again " + Label(code.target) + ';';
    case Step::Stop:
        return "stop;";
    }
    const char* const letters = m_block.letters.data() + draft.first;
    const QxOperand* const operands = m_block.operands.data() + draft.first;
    std::size_t k = 0;
    for (; k < code.count && letters[k] == 'w'; ++k)
        text += NameOf(operands[k].variable) + ' ';
    text += (k > 0 ? "= " : "") + WordOf(draft.row->primitive);
    for (; k < code.count; ++k)
        text += (letters[k] == 'r' ? " " : " &") + NameOf(operands[k].variable);
    return text + ';';
}

std::string DraftText::Print() const
{
    const std::vector<QxDraft>& drafts = m_block.drafts;
    std::string text;
    std::vector<std::size_t> open;
    std::uint32_t endOfWhere = 0;
    for (std::uint32_t i = 0; i < drafts.size(); ++i) {
        const Step step = drafts[i].code.step;
        if (i > 0 && i == endOfWhere)
            text += ") ";
        if (step == Step::Where)
            endOfWhere = drafts[i].code.target;
        if (const std::string label = Label(i); !label.empty())
            text += label + ": ";
        if (step == Step::Stop && i + 1 == drafts.size())
            break;
        text += PrintDraft(i) + ' ';
        if (step == Step::BeginParallel || QxIsCondition(step))
            open.push_back(i);
        if (step != Step::EndParallel && step != Step::EndIf)
            continue;
        if (open.empty() || drafts[open.back()].code.target != i + 1)
            text += "? ";
        if (!open.empty())
            open.pop_back();
    }
    if (!text.empty())
        text.pop_back();
    return text;
}
