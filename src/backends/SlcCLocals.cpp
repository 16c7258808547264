// The locals of the generated functions and their storage. A varying local has a value for each
// point. One block of memory contains the values of all varying locals; the local at its start is
// also the address by which the block is freed.
//
//     struct { float *a; const char **s; } v     block: s for all points, then a for all points
//
// Tested by tests/backends/CFileTest.cpp.

#include "backends/SlcCLocals.h"

#include <algorithm>

#include "backends/SlcGeneratedText.h"
#include "backends/SlcLocalFacts.h"

using Generated = SlcGeneratedText;

void SlcCLocals::Add(const SlcListICode& list)
{
    for (const SlcOperand& local : list.m_usedLocalVars) {
        m_all.push_back(local);
        (IsUniformLocal(local) ? m_uniform : m_varying).push_back(local);
    }
}

bool SlcCLocals::IsUniformLocal(const SlcOperand& local)
{
    return local->IsUniform() || local->GetType()->IsArrayRefType();
}

std::string SlcCLocals::ElementTypeText(const SlcOperand& local) const
{
    return m_types.GetString(ElementType(local));
}

int SlcCLocals::FloatsOf(const SlcOperand& local)
{
    const SlcTypeNode* type = ElementType(local);
    if (type->IsStringType())
        return 0;
    if (type->IsFloatType())
        return ElementCount(local);
    return (type->IsMatrixType() ? 16 : 3) * ElementCount(local);
}

SlcCLocals::PointSize SlcCLocals::SizeOfPoint() const
{
    PointSize size;
    for (const SlcOperand& local : m_varying) {
        size.floats += FloatsOf(local);
        if (OwnsStrings(local))
            size.strings += ElementCount(local);
    }
    return size;
}

/// Strings come first, since pointers would not be aligned after an odd number of floats.
std::vector<SlcOperand> SlcCLocals::InBlockOrder() const
{
    std::vector<SlcOperand> ordered = m_varying;
    std::stable_partition(ordered.begin(), ordered.end(), OwnsStrings);
    return ordered;
}

// Locals of the body

void SlcCLocals::GenVarsStructure()
{
    Line("typedef struct {");
    for (const SlcOperand& local : m_uniform) {
        m_out << '\t' << ElementTypeText(local) << ' ' << local->GetName();
        if (IsArray(local))
            m_out << '[' << ElementCount(local) << ']';
        Line(";");
    }
    Line("} ", Generated::sm_localUniformStructName, ";");
    Line();
    Line("typedef struct {");
    for (const SlcOperand& local : m_varying)
        Line("\t", ElementTypeText(local), " *", local->GetName(), ";");
    Line("} ", Generated::sm_localVaryingStructName, ";");
    Line();
}

void SlcCLocals::GenCreateLocalVars()
{
    Line("static void CreateLocalVars(QxLocalUniform *u, QxLocalVarying *v, unsigned int numMp)");
    Line("{");
    Line("\tunsigned int polyCnt;");
    Line();
    Line("\tmemset(u, 0, sizeof(QxLocalUniform));");
    Line();
    for (const SlcOperand& local : m_uniform) {
        if (!OwnsStrings(local))
            continue;
        if (!IsArray(local))
            Line("\tu->", local->GetName(), " = QxStrdup(\"\");");
        else
            for (int k = 0; k < ElementCount(local); ++k)
                Line("\tu->", local->GetName(), "[", k, "] = QxStrdup(\"\");");
    }
    if (!m_varying.empty()) {
        const PointSize size = SizeOfPoint();
        Line("\tchar *ptr = (char*)QxCalloc(numMp, (", size.floats, " * sizeof(float) + ",
             size.strings, " * sizeof(const char *)));");
    }
    for (const SlcOperand& local : InBlockOrder())
        GenVaryingLocal(local);
    Line();
    Line("}");
    Line();
}

void SlcCLocals::GenVaryingLocal(const SlcOperand& local)
{
    const std::string& name = local->GetName();
    const std::string type = ElementTypeText(local);
    Line("\tv->", name, " = (", type, "*)ptr;");
    if (OwnsStrings(local) && !IsArray(local))
        LineForEachPoint("v->" + name + "[polyCnt] = QxStrdup(\"\");");
    else if (OwnsStrings(local))
        for (int j = 0; j < ElementCount(local); ++j)
            LineForEachPoint("v->" + name + "[" + std::to_string(j) +
                             " * numMp + polyCnt] = QxStrdup(\"\");");
    if (IsArray(local))
        Line("\tptr += (numMp * sizeof(", type, "[", ElementCount(local), "]));");
    else
        Line("\tptr += (numMp * sizeof(", type, "));");
}

void SlcCLocals::GenDestroyLocalVars()
{
    Line("static void DestroyLocalVars(QxLocalUniform *u, QxLocalVarying *v, unsigned int numMp)");
    Line("{");
    Line("\tunsigned int polyCnt;");
    for (const bool arrays : {false, true})
        for (const SlcOperand& local : m_all)
            if (OwnsStrings(local) && IsArray(local) == arrays)
                FreeStrings(local, "\tFREE_STRING((char*)u->", "FREE_STRING((char*)v->");
    if (!m_varying.empty())
        Line("\tQxFree(v->", InBlockOrder().front()->GetName(), ");");
    Line("}");
    Line();
}

// Locals of the functions for default values

void SlcCLocals::GenUniformStructure(const std::vector<SlcOperand>& members)
{
    Line("\ttypedef struct {");
    for (const SlcOperand& local : members)
        GenMember(local);
    Line("\t} QxLocalInitUniform;");
    Line("\tQxLocalInitUniform u;");
    Line("\tmemset(&u, 0, sizeof(QxLocalInitUniform));");
}

void SlcCLocals::GenMember(const SlcOperand& local)
{
    const SlcTypeNode* type = local->GetType();
    if (type->IsArrayRefType()) {
        type = static_cast<const SlcArrayRefTypeNode*>(type)->GetElementType();
        Line("\t\t", m_types.GetString(type), " *", local->GetName(), ";");
    } else if (IsArray(local)) {
        Line("\t\t", ElementTypeText(local), " ", local->GetName(), "[", ElementCount(local), "];");
    } else {
        Line("\t\t", ElementTypeText(local), " ", local->GetName(), ";");
    }
}

void SlcCLocals::GenInstanceLocals()
{
    GenUniformStructure(m_all);
    Line();
}

void SlcCLocals::FreeInstanceLocals()
{
    for (const SlcOperand& local : m_all)
        FreeStrings(local, "\tFREE_STRING((char*) u.", "FREE_STRING((char*)v.");
}

void SlcCLocals::GenShadeTimeLocals()
{
    GenUniformStructure(m_uniform);
    Line("\ttypedef struct {");
    for (const SlcOperand& local : m_varying)
        Line("\t\t", ElementTypeText(local), " *", local->GetName(), ";");
    Line("\t} QxLocalInitVarying;");
    Line("\tQxLocalInitVarying v;");
    if (m_varying.empty())
        return;

    const PointSize size = SizeOfPoint();
    m_out << "\tchar *ptr = (char*)calloc(numMp, " << size.floats << " * sizeof(float)";
    if (size.strings > 0)
        m_out << " + " << size.strings << " * sizeof(const char *)";
    Line(");");
    Line("\tchar *initPtr = ptr;");
    for (const SlcOperand& local : InBlockOrder()) {
        const std::string type = ElementTypeText(local);
        Line("\tv.", local->GetName(), " = (", type, "*)ptr;");
        m_out << "\tptr += numMp * sizeof(" << type;
        if (IsArray(local))
            m_out << '[' << ElementCount(local) << ']';
        Line(");");
    }
}

void SlcCLocals::FreeShadeTimeLocals()
{
    for (const auto* group : {&m_uniform, &m_varying})
        for (const SlcOperand& local : *group)
            FreeStrings(local, "\t\tFREE_STRING((char*)u.", "FREE_STRING((char*)v.");
    if (!m_varying.empty())
        Line("\tfree(initPtr);");
}

void SlcCLocals::FreeStrings(const SlcOperand& local, const char* uniformAccess,
                             const char* varyingAccess)
{
    if (!OwnsStrings(local))
        return;
    const bool uniform = IsUniformLocal(local);
    for (int k = 0; k < ElementCount(local); ++k) {
        const std::string place = std::to_string(k);
        if (!uniform)
            LineForEachPoint(varyingAccess + local->GetName() + "[" +
                             (IsArray(local) ? place + " * numMp + " : "") + "polyCnt]);");
        else if (IsArray(local))
            Line(uniformAccess, local->GetName(), "[", place, "]);");
        else
            Line(uniformAccess, local->GetName(), ");");
    }
}
