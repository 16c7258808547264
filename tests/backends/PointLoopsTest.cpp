// Checks which instructions become one loop over points, which variables such a loop keeps in
// locals, and which loops run strip by strip.

#include <gtest/gtest.h>

#include "backends/SlcCStatements.h"
#include "backends/SlcPointLoops.h"
#include "helpers/CodeText.h"
#include "support/reports/SlcSemanticError.h"

namespace {

/// Returns the loops of a list after which all locals are used.
std::vector<SlcPointLoop> LoopsOf(const SlcListICode& list)
{
    return SlcFindPointLoops(list, SlcValueSpans(list, list.m_localVars));
}

/// Returns "begin..end constants; loaded; computed; stored; flags" for each loop, with a star if
/// it has a guard, and with " | " between loops.
std::string Shown(const std::vector<SlcPointLoop>& loops)
{
    SlcText out;
    for (const SlcPointLoop& loop : loops) {
        out << (out.Str().empty() ? "" : " | ") << loop.begin << ".." << loop.end
            << (loop.hasGuard ? "*" : "");
        const char* separator = "";
        for (const auto* operands :
             {&loop.constants, &loop.loaded, &loop.computed, &loop.stored, &loop.flags}) {
            out << separator;
            separator = ";";
            for (const SlcOperand& operand : *operands)
                out << ' ' << operand->GetName();
        }
    }
    return out.Str();
}

struct LoopCase {
    const char* code;
    const char* loops;
};

TEST(SlcPointLoops, AreMaximal)
{
    static const LoopCase cases[] = {
        {"{ f?( x = y * u; ) }", "0..5* u; f y x;; x;"},
        // Copies, flag operations and cheap calls for the whole grid are joined with parallel runs.
        {"{ x = y; } f <- f1; { z = x; }", "0..7; y f1; x f z; x f z;"},
        {"{ f = x < 1; } f1 = not f; f2 = f or f1; { f2?( x = 1; ) }",
         "0..10*; x; f f1 f2; x f f1 f2;"},
        {"{ f = x < 1; } y = SMOOTHSTEP(x, x, z) simd at f; ", "0..4; x z y; f; f y;"},
        // Expensive calls and references to array elements are in no loop.
        {"{ x = y; } y = NOISE_FLOAT_1D(x) simd; { z = y; }", "0..3; y; x; x; | 4..7; y; z; z;"},
        {"{ x = POW(y, z); }", ""},
        {"{ r = &a[u]; x = r; }", ""},
        // A loop ends before an instruction that reads a uniform flag which it sets.
        {"{ f = x < 1; } g = any f; { x = 1; }", "0..7; x; f; x f; g"},
        {"{ f = x < 1; } g = any f; { f1 = g; }", "0..4; x; f; f; g | 4..7 g;; f1; f1;"},
        // A uniform variable must not be written, unless it is temp-uniform.
        {"{ t = x * 2; y = t + 1; }", "0..4; x; t y; y;"},
        {"{ t = x * 2; y = t; } { t = y; z = t; }", "0..8; x; t y z; y z;"},
        {"{ u = x * 2; } { z = u; }", "3..6 u;; z; z;"},
        // A predefined variable is kept in a local if it is the only one of its type, or if none is
        // written.
        {"{ f?( Cx = y; ) }", "0..5*; f y Cx;; Cx;"},
        {"{ f?( Cx = Cy; ) }", "0..5*; f;;;"},
        {"{ f?( x = Cx * Cy; ) }", "0..5*; f Cx Cy x;; x;"},
    };
    for (const LoopCase& c : cases)
        EXPECT_EQ(Shown(LoopsOf(*CodeText().List(c.code))), c.loops) << c.code;
}

struct StripCase {
    const char* code;
    const char* strips;  // "begin..end" of each
};

TEST(SlcStripLoops, CanBeLeftStripByStrip)
{
    static const StripCase cases[] = {
        {"L0: { f = x < 1; } g = any f; !g? goto L1; { f?( x = x + 1; ) } goto L0; L1: { y = x; }",
         "0..13"},
        // The flag is read elsewhere, or not right after it is set.
        {"L0: { f = x < 1; } g = any f; !g? goto L1; { f?( x = x + 1; ) } goto L0; L1: { f = g; }",
         ""},
        {"L0: { f = x < 1; } g = any f; L2: !g? goto L1; { f?( x = x + 1; ) } goto L0; L1:", ""},
        // A uniform variable changes in each iteration, or an expensive call is in no point loop.
        {"L0: u = u + 1; { f = x < u; } g = any f; g? goto L0;", ""},
        {"L0: { f = x < 1; } g = any f; !g? goto L1; x = NOISE_FLOAT_1D(x) simd; goto L0; L1:", ""},
        // Jumps lead into the loop, or out of it past its end.
        {"!g1? goto L1; L0: { f = x < 1; } g = any f; !g? goto L1; { x = x + 1; } goto L0; L1:",
         ""},
        {"L0: { f = x < 1; } g = any f; !g? goto L1; { x = x + 1; } goto L0; { y = x; } L1:", ""},
        // No flag ends the loop.
        {"L0: { x = 1; } goto L0;", ""},
    };
    for (const StripCase& c : cases) {
        CodeText text;
        const SlcPtr<SlcListICode> list = text.List(c.code);
        std::string strips;
        for (const SlcStripLoop& strip : SlcFindStripLoops(*list, LoopsOf(*list)))
            strips += std::to_string(strip.begin) + ".." + std::to_string(strip.end);
        EXPECT_EQ(strips, c.strips) << c.code;
    }
}

// Otherwise a C++ compiler that believes that the iterations are independent could use the value of
// another point.
TEST(SlcParallelRuns, ShareNoTemporaries)
{
    CodeText text;
    SlcText out;
    SlcCStatements(MakeShared<SlcSemanticError>(), out)
        .PrintListICode(*text.List("{ t = x; y = t; z = y; Cx = z; } { r = &a[x]; Cx = r; } "
                                   "{ Cx = r; } { t = x; u = t; y = p; } y = SQRT(y) simd; "
                                   "Cx = y;"));
    EXPECT_EQ(out.Str(), R"(	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	float u_t = {};
	float v_y = {};
	float v_z = {};
	ASSIGN_FLOAT_FLOAT(u_t, v.x[polyCnt]);
	ASSIGN_FLOAT_FLOAT(v_y, u_t);
	ASSIGN_FLOAT_FLOAT(v_z, v_y);
	ASSIGN_FLOAT_FLOAT(Cx[polyCnt], v_z);
	}
	for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	u.r = (v.a + int(v.x[polyCnt]) * numMp);
	ASSIGN_FLOAT_FLOAT(Cx[polyCnt], u.r[polyCnt]);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	ASSIGN_FLOAT_FLOAT(Cx[polyCnt], u.r[polyCnt]);
	}
	for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	float u_t = {};
	ASSIGN_FLOAT_FLOAT(u_t, v.x[polyCnt]);
	ASSIGN_FLOAT_FLOAT(u.u, u_t);
	ASSIGN_FLOAT_FLOAT(v.y[polyCnt], ((float*)i_visibles[INDEX_p].Value())[polyCnt]);
	}
	CALL_PRIM_SQRT_SIMD(v.y, v.y);
	ASSIGN_FLOAT_FLOAT(Cx[polyCnt], v.y[polyCnt]);
	;
)");
}

TEST(SlcPointLoops, LoadFirstAndStoreLast)
{
    CodeText text;
    SlcText out;
    SlcCStatements(MakeShared<SlcSemanticError>(), out)
        .PrintListICode(
            *text.List("L0: { f = x < p; } f <- f1; g = any f; !g? goto L1; { f?( t = x "
                       "+ 1; x = t; ) } f1 = f2 but not f; goto L0; L1:"));
    EXPECT_EQ(out.Str(), R"(	QX_FOR_STRIPS {
	L0:	;
	{
	unsigned int any_g = 0;
	QX_POINTS_APART for (polyCnt = firstPoint; polyCnt < endPoint; polyCnt++) {
	float v_x; ASSIGN_FLOAT_FLOAT(v_x, v.x[polyCnt]);
	float p_p; ASSIGN_FLOAT_FLOAT(p_p, ((float*)i_visibles[INDEX_p].Value())[polyCnt]);
	QxStopAndBool v_f1; ASSIGN_BOOL_BOOL(v_f1, v.f1[polyCnt]);
	QxStopAndBool v_f = {};
	{
	BOOL_LESS_THEN_FLOAT_FLOAT(v_f, v_x, p_p);
	}
	ASSIGN_BOOL_BOOL(v_f, v_f1);
	any_g |= BOOL_IS_TRUE(v_f);
	ASSIGN_BOOL_BOOL(v.f[polyCnt], v_f);
	}
	SET_BOOL(u.g, any_g != 0);
	}
	if (BOOL_IS_FALSE(u.g)) goto L1;
	{
	QX_POINTS_APART for (polyCnt = firstPoint; polyCnt < endPoint; polyCnt++) {
	QxStopAndBool v_f; ASSIGN_BOOL_BOOL(v_f, v.f[polyCnt]);
	float v_x; ASSIGN_FLOAT_FLOAT(v_x, v.x[polyCnt]);
	QxStopAndBool v_f2; ASSIGN_BOOL_BOOL(v_f2, v.f2[polyCnt]);
	QxStopAndBool v_f1; ASSIGN_BOOL_BOOL(v_f1, v.f1[polyCnt]);
	float u_t = {};
	{
	if (BOOL_IS_TRUE(v_f)) {
	ADD_FLOAT_FLOAT(u_t, v_x, 1.000000e+00);
	ASSIGN_FLOAT_FLOAT(v_x, u_t);
	}
	}
	ASSIGN_BOOL_BOOL(v_f1, BOOL_IS_TRUE(v_f2) & BOOL_IS_FALSE(v_f));
	ASSIGN_FLOAT_FLOAT(v.x[polyCnt], v_x);
	ASSIGN_BOOL_BOOL(v.f1[polyCnt], v_f1);
	}
	}
	goto L0;
	L1:	;
	}
	;
)");
}

}  // namespace
