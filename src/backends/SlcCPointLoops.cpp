// Writes lists, with loops over points that keep the values that they access in variables:
//
//     {
//     const float p_edge = *((float*)i_visibles[INDEX_edge].Value());
//     unsigned int any_T7_ = 0;
//     QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
//     float v_x_1; ASSIGN_FLOAT_FLOAT(v_x_1, v.x_1[polyCnt]);
//     ...
//     ASSIGN_FLOAT_FLOAT(v.x_1[polyCnt], v_x_1);
//     }
//     SET_BOOL(u.T7_, any_T7_ != 0);
//     }
//
// Other parallel runs declare only their temporaries in the iteration. The prefix of a name is `u`
// or `v` for a uniform or varying local, `p` for a parameter, `h` for a predefined variable and `l`
// for a variable of a light, so that all names differ.
//
// Tested by tests/backends/PointLoopsTest.cpp.

#include "backends/SlcCStatements.h"
#include "backends/SlcForwardResults.h"
#include "backends/SlcValueSpans.h"
#include "symbols/SlcGeneratedNames.h"

namespace {

constexpr std::string_view k_pointsApart = "QX_POINTS_APART ";

/// Returns the assignment of a value that has the type of the operand. An initialization would copy
/// triples as a whole, which C++ compilers do not vectorize well.
std::string AssignmentOf(const SlcOperand& operand, const std::string& to, const std::string& from)
{
    return SlcAssignName(operand->GetType(), operand->GetType()) + '(' + to + ", " + from + ");";
}

std::string NameOfKept(const SlcOperand& operand)
{
    const std::string& name = operand->GetName();
    const SlcStorageSpecNode* storage = operand->GetStorage();
    if (storage->IsLocal())
        return (operand->IsUniform() ? "u_" : "v_") + name;
    if (storage->IsInput() || storage->IsOutput())
        return "p_" + name;
    for (const SqxPredefined& row : k_sqxPredefined)
        if (name == row.accessor)
            return "h_" + std::string(row.name);
    // A variable of a loop over lights: (i_lights[lightCnt].Cl)
    return "l_" + name.substr(name.rfind('.') + 1, name.size() - name.rfind('.') - 2);
}

}  // namespace

void SlcCStatements::PrintListICode(const SlcListICode& list, const std::deque<SlcOperand>& results)
{
    const SlcPtr<SlcListICode> forwarded = SlcForwardResults(list, SlcValueSpans(list, results));
    WriteList(*forwarded, SlcValueSpans(*forwarded, results));
}

void SlcCStatements::WriteList(const SlcListICode& list, const SlcValueSpans& spans)
{
    const auto& codes = list.m_icodes;
    const std::vector<SlcPointLoop> loops = SlcFindPointLoops(list, spans);
    const std::vector<SlcStripLoop> strips = SlcFindStripLoops(list, loops);
    const std::vector<SlcParallelRun> runs = SlcFindParallelRuns(list, spans);
    auto loop = loops.begin();
    auto strip = strips.begin();
    auto run = runs.begin();
    for (std::size_t i = 0; i < codes.size();) {
        if (strip != strips.end() && strip->begin == i) {
            Line("\tQX_FOR_STRIPS {");
            m_inStrip = true;
        }
        if (loop != loops.end() && loop->begin == i && (loop->IsWorthVariables() || m_inStrip)) {
            WritePointLoop(list, *loop);
            i = loop->end;
        } else if (run != runs.end() && run->begin == i) {
            WriteParallelRun(list, *run);
            i = run->end;
        } else {
            m_out << '\t';
            codes[i++]->ApplyWalker(this);
        }
        while (loop != loops.end() && loop->begin < i)
            ++loop;
        while (run != runs.end() && run->begin < i)
            ++run;
        if (m_inStrip && strip->end == i) {
            Line("\t}");
            m_inStrip = false;
            ++strip;
        }
    }
    Line("\t;");
}

void SlcCStatements::WriteParallelRun(const SlcListICode& list, const SlcParallelRun& run)
{
    Line('\t', run.isApart ? k_pointsApart : std::string_view(),
         "for (polyCnt = 0; polyCnt < numMp; polyCnt++) {");
    DeclareComputed(run.temporaries);
    WriteCodes(list, run.begin + 1, run.end);
    m_values.ForgetKept();
}

void SlcCStatements::DeclareComputed(const std::vector<SlcOperand>& operands)
{
    for (const SlcOperand& operand : operands) {
        Line('\t', m_types.GetString(operand->GetType()), ' ', NameOfKept(operand), " = {};");
        m_values.Keep(operand, NameOfKept(operand));
    }
}

void SlcCStatements::WriteCodes(const SlcListICode& list, std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i) {
        m_out << '\t';
        list.m_icodes[i]->ApplyWalker(this);
    }
}

void SlcCStatements::WritePointLoop(const SlcListICode& list, const SlcPointLoop& loop)
{
    Line("\t{");
    for (const SlcOperand& operand : loop.constants)
        Line("\tconst ", m_types.GetString(operand->GetType()), ' ', NameOfKept(operand), " = ",
             Text(operand), ";");
    for (const SlcOperand& flag : loop.flags)
        Line("\tunsigned int any_", flag->GetName(), " = 0;");
    Line('\t', k_pointsApart, "for (polyCnt = ", m_inStrip ? "firstPoint" : "0", "; polyCnt < ",
         m_inStrip ? "endPoint" : "numMp", "; polyCnt++) {");
    WriteIteration(list, loop);
    Line("\t}");
    for (const SlcOperand& flag : loop.flags)
        Line("\tSET_BOOL(", Text(flag), ", any_", flag->GetName(), " != 0);");
    Line("\t}");
}

void SlcCStatements::WriteIteration(const SlcListICode& list, const SlcPointLoop& loop)
{
    Texts stores;  // computed first, since `Text` changes for operands that are kept
    for (const SlcOperand& operand : loop.stored)
        stores.push_back(AssignmentOf(operand, Text(operand), NameOfKept(operand)));
    for (const SlcOperand& operand : loop.loaded) {
        const std::string name = NameOfKept(operand);
        Line('\t', m_types.GetString(operand->GetType()), ' ', name, "; ",
             AssignmentOf(operand, name, Text(operand)));
    }
    for (const auto* kept : {&loop.constants, &loop.loaded})
        for (const SlcOperand& operand : *kept)
            m_values.Keep(operand, NameOfKept(operand));
    DeclareComputed(loop.computed);
    m_inPointLoop = true;
    WriteCodes(list, loop.begin, loop.end);
    m_inPointLoop = false;
    m_values.ForgetKept();
    for (const std::string& store : stores)
        Line('\t', store);
}

void SlcCStatements::WriteCallAtPoint(const SlcCallICode& code)
{
    if (code.m_form.condition)
        m_out << "if (BOOL_IS_TRUE(" << Text(code.m_form.condition) << ")) ";
    Texts texts{Text(code.m_result)};
    for (const SlcOperand& argument : code.m_args)
        texts.push_back(Text(argument));
    WriteCall(code.m_primitive, texts);
}
