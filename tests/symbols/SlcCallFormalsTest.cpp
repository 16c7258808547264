// Checks which formal `SlcFormalAt` returns for each position of an argument in an instruction.

#include "symbols/SlcCallFormals.h"

#include <gtest/gtest.h>

#include "symbols/SlcBuiltInTable.h"
#include "symbols/TypedArgs.h"

TEST(SlcCallFormals, FindsTheFormalAtEachPlaceOfAnInstruction)
{
    struct Case {
        const char* function;
        std::size_t position;
        const char* formal;
    };
    const Case cases[] = {
        {"diffuse", 0, "normal"},
        {"fresnel", 2, "float"},
        {"fresnel", 3, "output float"},
        {"pnoise", 1, "uniform float"},
        // The card of `unpack` declares all arguments as inputs.
        {"unpack", 0, "float"},
        {"unpack", 1, "output float"},
        {"unpack", 4, "output float"},
        // In a variable tail only the values have positions, not the names.
        {"occlusion", 2, "float in the tail"},
        {"occlusion", 3, "float in the tail"},
        {"occlusion", 7, "vector in the tail"},
        {"occlusion", 8, "output vector in the tail"},
        {"occlusion", 9, "any"},
        {"concat", 1000, "string in the tail"},
        {"diffuse", 1, "any"},
    };
    const auto library = SlcBuiltInTable({});
    for (const Case& c : cases) {
        const auto entry = library->GetFuncEntrys(Ident(c.function), T::AError()).front();
        const SlcCallFormal formal = SlcFormalAt(*entry, c.position);
        std::string text = formal.isOutput ? "output " : "";
        text += formal.detail->IsUniform() ? "uniform " : "";
        text += formal.type->IsAnyType() ? "any" : formal.type->ToString();
        text += formal.tailValue ? " in the tail" : "";
        EXPECT_EQ(text, c.formal) << c.function << " " << c.position;
    }
}
