// The locals of a body and their storage. A varying local is one array with an element for each
// point; one block of memory holds the arrays of all of them.
//
//     struct { float *a; char **s; } v     block: s for all points, then a for all points
//
// Tested by tests/backends/CFileTest.cpp.

#include <algorithm>

#include "backends/SlcGenCCode.h"
#include "backends/SlcGeneratedText.h"
#include "backends/SlcLocalFacts.h"

using Generated = SlcGeneratedText;

bool SlcGenCCode::IsUniformLocal(const SlcOperand& local)
{
    return local->IsUniform() || local->GetType()->IsArrayRefType();
}

void SlcGenCCode::AddLocals(const SlcListICode& list, Locals& locals)
{
    for (const SlcOperand& local : list.m_usedLocalVars)
        (IsUniformLocal(local) ? locals.uniform : locals.varying).push_back(local);
}

std::string SlcGenCCode::ElementTypeText(const SlcOperand& operand) const
{
    return m_types.GetString(ElementType(operand));
}

SlcGenCCode::PointSize SlcGenCCode::SizeOf(const std::vector<SlcOperand>& varying)
{
    PointSize size;
    for (const SlcOperand& local : varying) {
        const SlcTypeNode* type = ElementType(local);
        if (type->IsStringType())
            size.strings += ElementCount(local);
        else if (type->IsFloatType())
            size.floats += ElementCount(local);
        else if (type->IsMatrixType())
            size.floats += 16 * ElementCount(local);
        else
            size.floats += 3 * ElementCount(local);
    }
    return size;
}

/// Pointers come first: behind an odd number of floats they would not be aligned.
std::vector<SlcOperand> SlcGenCCode::InBlockOrder(const std::vector<SlcOperand>& varying)
{
    std::vector<SlcOperand> ordered = varying;
    std::stable_partition(ordered.begin(), ordered.end(), OwnsStrings);
    return ordered;
}

void SlcGenCCode::GenVarsStructure()
{
    Locals locals;
    AddLocals(*m_form->m_mainList, locals);

    Line("typedef struct {");
    for (const SlcOperand& local : locals.uniform) {
        m_out << '\t' << ElementTypeText(local) << ' ' << local->GetName();
        if (IsArray(local))
            m_out << '[' << ElementCount(local) << ']';
        Line(";");
    }
    Line("} ", Generated::sm_localUniformStructName, ";");
    Line();
    Line("typedef struct {");
    for (const SlcOperand& local : locals.varying)
        Line("\t", ElementTypeText(local), " *", local->GetName(), ";");
    Line("} ", Generated::sm_localVaryingStructName, ";");
    Line();

    if (m_options->m_createLocalVars) {
        GenCreateLocalVars(locals);
        GenDestroyLocalVars(locals);
    }
}

void SlcGenCCode::WriteForEachPoint(const std::string& statement)
{
    Line("\tfor (polyCnt = 0; polyCnt < numMp; ++polyCnt) {");
    Line("\t", statement);
    Line("\t}");
}

void SlcGenCCode::GenCreateLocalVars(const Locals& locals)
{
    Line("static void CreateLocalVars(QxLocalUniform *u, QxLocalVarying *v, unsigned int numMp)");
    Line("{");
    Line("\tunsigned int polyCnt;");
    Line();
    Line("\tmemset(u, 0, sizeof(QxLocalUniform));");
    Line();
    for (const SlcOperand& local : locals.uniform) {
        if (!OwnsStrings(local))
            continue;
        if (!IsArray(local))
            Line("\tu->", local->GetName(), " = QxStrdup(\"\");");
        else
            for (int k = 0; k < ElementCount(local); ++k)
                Line("\tu->", local->GetName(), "[", k, "] = QxStrdup(\"\");");
    }
    if (!locals.varying.empty()) {
        const PointSize size = SizeOf(locals.varying);
        Line("\tchar *ptr = (char*)QxCalloc(numMp, (", size.floats, " * sizeof(float) + ",
             size.strings, " * sizeof(const char *)));");
    }
    for (const SlcOperand& local : InBlockOrder(locals.varying))
        GenVaryingLocal(local);
    Line();
    Line("}");
    Line();
}

void SlcGenCCode::GenVaryingLocal(const SlcOperand& local)
{
    const std::string& name = local->GetName();
    const std::string type = ElementTypeText(local);
    Line("\tv->", name, " = (", type, "*)ptr;");
    if (OwnsStrings(local) && !IsArray(local))
        WriteForEachPoint("v->" + name + "[polyCnt] = QxStrdup(\"\");");
    else if (OwnsStrings(local))
        for (int j = 0; j < ElementCount(local); ++j)
            WriteForEachPoint("v->" + name + "[" + std::to_string(j) +
                              " * numMp + polyCnt] = QxStrdup(\"\");");
    if (IsArray(local))
        Line("\tptr += (numMp * sizeof(", type, "[", ElementCount(local), "]));");
    else
        Line("\tptr += (numMp * sizeof(", type, "));");
}

void SlcGenCCode::GenDestroyLocalVars(const Locals& locals)
{
    Line("static void DestroyLocalVars(QxLocalUniform *u, QxLocalVarying *v, unsigned int numMp)");
    Line("{");
    Line("\tunsigned int polyCnt;");
    for (const bool arrays : {false, true})
        for (const SlcOperand& local : m_form->m_mainList->m_usedLocalVars)
            if (OwnsStrings(local) && IsArray(local) == arrays)
                FreeStrings(local, "\tFREE_STRING((char*)u->", "FREE_STRING((char*)v->");
    if (!locals.varying.empty())
        Line("\tQxFree(v->", InBlockOrder(locals.varying).front()->GetName(), ");");
    Line("}");
    Line();
}

void SlcGenCCode::FreeStrings(const SlcOperand& local, const char* uniformAccess,
                              const char* varyingAccess)
{
    if (!OwnsStrings(local))
        return;
    const bool uniform = IsUniformLocal(local);
    for (int k = 0; k < ElementCount(local); ++k) {
        const std::string place = std::to_string(k);
        if (!uniform)
            WriteForEachPoint(varyingAccess + local->GetName() + "[" +
                              (IsArray(local) ? place + " * numMp + " : "") + "polyCnt]);");
        else if (IsArray(local))
            Line(uniformAccess, local->GetName(), "[", place, "]);");
        else
            Line(uniformAccess, local->GetName(), ");");
    }
}
