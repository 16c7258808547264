#include "symbols/SlcSymbolTable.h"

#include <gtest/gtest.h>

#include "frontend/SlcDefinitionNodes.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/TypedArgs.h"

namespace {

using Table = SlcPtr<SlcSymbolTable>;

SlcPtr<SlcVarSymbolEntry> AddFloat(const Table& table, const std::string& name)
{
    return table->AddVarEntry(Ident(name), T::AFloat(), SlcDetailNode::AUnknown(),
                              SlcStorageSpecNode::ALocal(), false, nullptr, nullptr);
}

SlcPtr<SlcVarSymbolEntry> FindOrNull(const Table& table, const std::string& name,
                                     bool noDefinitionScope = false)
{
    const auto found = table->FindVarEntry(Ident(name), noDefinitionScope);
    if (found.Null()) {
        EXPECT_THROW(static_cast<void>(table->GetVarEntry(Ident(name), noDefinitionScope)),
                     SlcSymbolNotFound);
    }
    return found;
}

/// Returns the return types of the overloads that fit a call, or why none fits.
std::string SearchText(const Table& table, const std::string& name, TypedArgs& args,
                       bool noVoid = false)
{
    using Functions = SlcLookup::Functions;
    const SlcOverloads overloads = table->FindOverloads(
        {Ident(name), args.Node(), noVoid ? Functions::WithValue : Functions::All}, nullptr);
    switch (overloads.outcome) {
    case SlcOverloads::Outcome::Found:
        return TextOf(overloads.types);
    case SlcOverloads::Outcome::UnknownName:
        return "not found";
    case SlcOverloads::Outcome::WrongCount:
        return "number";
    case SlcOverloads::Outcome::WrongTypes:
        return "types of " + TextOf(overloads.closest->GetArgTypes());
    }
    return {};
}

std::string SearchText(const Table& table, const std::string& name,
                       const std::vector<TypedArgs::Types>& sets, bool noVoid = false)
{
    TypedArgs args(sets);
    return SearchText(table, name, args, noVoid);
}

}  // namespace

TEST(SlcSymbolTable, DistinguishesVariablesAndFunctionsOfOneName)
{
    const auto table = MakeShared<SlcSymbolTable>();
    const auto variable = AddFloat(table, "f");
    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AColor(), {})));
    EXPECT_EQ(FindOrNull(table, "f"), variable);
    EXPECT_EQ(SearchText(table, "f", std::vector<TypedArgs::Types>{}), "color");
    EXPECT_TRUE(table->IsInCurrent(Ident("f"), true));
    EXPECT_TRUE(table->IsVarInTable(Ident("f")));

    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("g", T::AFloat(), {})));
    EXPECT_TRUE(table->IsInCurrent(Ident("g"), true));
    EXPECT_FALSE(table->IsVarInTable(Ident("g")));
    EXPECT_TRUE(FindOrNull(table, "g").Null());
}

TEST(SlcSymbolTable, FindsWhatEarlierTablesOfTheScopeDeclare)
{
    const auto outer = MakeShared<SlcSymbolTable>();
    const auto first = outer->CreateNewScopeTable();
    const auto a = AddFloat(first, "a");
    const auto second = first->CreateCurrentScopeTable();
    const auto b = AddFloat(second, "b");
    AddFloat(outer, "c");

    EXPECT_EQ(FindOrNull(second, "a"), a);
    EXPECT_EQ(FindOrNull(second, "b"), b);
    EXPECT_TRUE(FindOrNull(first, "b").Null());
    EXPECT_TRUE(second->IsInCurrent(Ident("a"), false));
    EXPECT_FALSE(second->IsInCurrent(Ident("a"), true));
    EXPECT_FALSE(second->IsInCurrent(Ident("c"), false));  // another scope
    EXPECT_TRUE(second->IsVarInTable(Ident("c")));
}

TEST(SlcSymbolTable, HidesOuterVariablesByNearerOnes)
{
    const auto outer = MakeShared<SlcSymbolTable>();
    const auto far = AddFloat(outer, "x");
    const auto inner = outer->CreateNewScopeTable()->CreateCurrentScopeTable();
    EXPECT_EQ(FindOrNull(inner, "x"), far);
    const auto near = AddFloat(inner, "x");
    EXPECT_EQ(FindOrNull(inner, "x"), near);
    EXPECT_EQ(FindOrNull(outer, "x"), far);
}

TEST(SlcSymbolTable, SeparatesTablesThatFollowTheSameTable)
{
    const auto table = MakeShared<SlcSymbolTable>()->CreateNewScopeTable();
    const auto shared = AddFloat(table, "shared");
    const auto one = table->CreateCurrentScopeTable();
    const auto other = table->CreateCurrentScopeTable();
    const auto a = AddFloat(one, "a");
    AddFloat(other, "b");
    EXPECT_EQ(FindOrNull(one, "a"), a);
    EXPECT_TRUE(FindOrNull(one, "b").Null());
    EXPECT_TRUE(FindOrNull(other, "a").Null());
    EXPECT_EQ(FindOrNull(other, "shared"), shared);
    EXPECT_TRUE(other->IsInCurrent(Ident("shared"), false));
}

TEST(SlcSymbolTable, SearchesTheDefinitionScopeLast)
{
    const auto global = MakeShared<SlcSymbolTable>();
    const auto shader = global->CreateNewScopeTable();
    const auto function = global->CreateNewScopeTable();
    function->m_definitionScope = shader;
    const auto body = function->CreateCurrentScopeTable()->CreateNewScopeTable();
    const auto hidden = AddFloat(shader, "x");
    EXPECT_EQ(FindOrNull(body, "x"), hidden);
    EXPECT_TRUE(FindOrNull(function, "x", true).Null());
    EXPECT_FALSE(body->IsVarInTable(Ident("x")));

    const auto visible = AddFloat(global, "x");  // farther out, but an enclosing scope
    EXPECT_EQ(FindOrNull(body, "x"), visible);
}

TEST(SlcSymbolTable, FindsOverloadsByExactFitInAnyScopeBeforePromotion)
{
    const auto global = MakeShared<SlcSymbolTable>();
    const auto local = global->CreateNewScopeTable();
    local->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AColor(), {T::AColor()})));
    local->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("g", T::AColor(), {T::AColor()})));
    local->AddEntry(
        MakeShared<SlcFuncSymbolEntry>(SignatureOf("h", T::AColor(), {T::AColor(), T::AColor()})));
    global->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AFloat()})));
    global->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("h", T::AFloat(), {T::AFloat()})));

    struct Case {
        const char* name;
        std::vector<TypedArgs::Types> args;
        const char* found;
    };
    const Case cases[] = {
        {"f", {{T::AFloat()}}, "float"},  // an exact outer match beats a promoted inner one
        {"f", {{T::AColor()}}, "color"},
        {"f", {{T::AFloat(), T::AColor()}}, "color"},  // an exact inner match hides outer ones
        {"g", {{T::AFloat()}}, "color"},
        {"g", {{T::AString()}}, "types of color"},
        {"g", {{T::AFloat()}, {T::AFloat()}, {T::AFloat()}}, "number"},
        {"h", {{T::AColor()}, {T::AColor()}}, "color"},
        {"h", {{T::AFloat()}, {T::AFloat()}}, "number"},  // the outer `h` takes one argument
        {"k", {}, "not found"},
        {"f", {{T::AError()}}, "color"},  // the type of a reported error fits any formal
    };
    for (const Case& c : cases)
        EXPECT_EQ(SearchText(local, c.name, c.args), c.found) << c.name;
}

TEST(SlcSymbolTable, TreatsThePointFamilyAsOneTypeOfOverload)
{
    const auto table = MakeShared<SlcSymbolTable>();
    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::APoint(), {T::APoint()})));
    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AVector(), {T::AVector()})));
    TypedArgs args({{T::ANormal()}});
    EXPECT_EQ(SearchText(table, "f", args), "point");
    const auto entry = table->FindUniqueFuncEntry(Ident("f"), T::APoint(), args.Choose().List());
    EXPECT_EQ(entry->GetReturnType(), T::AVector());  // the later of equal matches
    EXPECT_EQ(table->GetFuncEntrys(Ident("f"), T::ANormal()).size(), 2u);
    EXPECT_TRUE(table->GetFuncEntrys(Ident("g"), T::ANormal()).empty());
}

TEST(SlcSymbolTable, ExcludesVoidFunctionsWhereAValueIsRequired)
{
    const auto table = MakeShared<SlcSymbolTable>();
    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AVoid(), {T::AFloat()})));
    EXPECT_EQ(SearchText(table, "f", {{T::AFloat()}}), "void");
    EXPECT_EQ(SearchText(table, "f", {{T::AFloat()}}, true), "types of float");
    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AFloat()})));
    EXPECT_EQ(SearchText(table, "f", {{T::AFloat()}}), "void float");
    EXPECT_EQ(SearchText(table, "f", {{T::AFloat()}}, true), "float");
}

TEST(SlcSymbolTable, NeverPromotesAnOutputArgument)
{
    const auto table = MakeShared<SlcSymbolTable>();
    auto signature = SignatureOf("f", T::AFloat(), {T::AColor(), T::AAnyType()});
    signature.argStorages = {SlcStorageSpecNode::AOutput(), SlcStorageSpecNode::AOutput()};
    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(std::move(signature)));
    EXPECT_EQ(SearchText(table, "f", {{T::AFloat()}, {T::AString()}}), "types of color any");
    // A formal of type any accepts a value of every type but void.
    const auto array = T::CreateArrayType(T::AFloat(), 3);
    for (SlcTypeNode* type : {T::AFloat(), T::AString(), T::AMatrix(), T::ANormal(), array})
        EXPECT_EQ(SearchText(table, "f", {{T::AColor()}, {type}}), "float") << type->ToString();
    EXPECT_EQ(SearchText(table, "f", {{T::AColor()}, {T::AVoid()}}), "types of color any");
}

TEST(SlcSymbolTable, PicksTheOverloadOfACallByUniqueTypes)
{
    const auto global = MakeShared<SlcSymbolTable>();
    const auto local = global->CreateNewScopeTable();
    global->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AFloat()})));
    local->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AColor()})));
    local->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AMatrix()})));
    const auto formalOf = [&](SlcTypeNode* unique) {
        TypedArgs args({{unique}});
        const auto entry =
            local->FindUniqueFuncEntry(Ident("f"), T::AFloat(), args.Choose().List());
        return entry ? entry->GetArgTypes().front()->ToString() : "none";
    };
    EXPECT_EQ(formalOf(T::AFloat()), "float");
    EXPECT_EQ(formalOf(T::AColor()), "color");
    EXPECT_EQ(formalOf(T::AMatrix()), "matrix");
    EXPECT_EQ(formalOf(T::AString()), "none");
    TypedArgs tooMany({{T::AFloat()}, {T::AFloat()}});
    EXPECT_TRUE(
        local->FindUniqueFuncEntry(Ident("f"), T::AFloat(), tooMany.Choose().List()).Null());
}

TEST(SlcSymbolTable, FindsTheFirstFunctionWithTheSameFormals)
{
    auto names = std::make_unique<SlcDefExprsNode>();
    names->AddDefExpr(
        std::make_unique<SlcDefExprNode>(SlcPosition(), Ident("a"), nullptr, /*arraySize=*/0));
    SlcFormalsNode formals;
    formals.AddVarDef(std::make_unique<SlcVarDefsNode>(
        std::make_unique<SlcTypeSpecNode>(SlcPosition(), SlcStorageSpecNode::AOutput(),
                                          SlcDetailNode::AUniform(), T::AColor()),
        std::move(names)));

    const auto table = MakeShared<SlcSymbolTable>();
    table->AddEntry(MakeShared<SlcFuncSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AColor()})));
    EXPECT_TRUE(table->FindUniqueFuncEntry(Ident("f"), T::AFloat(), &formals).Null());
    for (int i = 0; i < 2; ++i)
        table->AddFuncEntry(Ident("f"), T::AFloat(), &formals, nullptr, nullptr, nullptr);
    const auto entry = table->FindUniqueFuncEntry(Ident("f"), T::AFloat(), &formals);
    EXPECT_EQ(entry, table->GetFuncEntrys(Ident("f"), T::AFloat())[1]);
    EXPECT_EQ(TextOf(entry->GetArgTypes()), "color[]");
    EXPECT_TRUE(entry->GetArgStorages().front()->IsOutput());
    EXPECT_TRUE(entry->GetArgDetails().front()->IsUniform());
    EXPECT_EQ(entry->GetOrigin(), SlcFuncOrigin::User);
}

TEST(SlcSymbolTable, FindsNamesInALongScopeWithoutWalkingIt)
{
    // There is one table per declaration, as in a long generated shader. The time of a look-up must
    // not depend on the number of tables.
    auto table = MakeShared<SlcSymbolTable>()->CreateNewScopeTable();
    const auto first = AddFloat(table, "first");
    for (int i = 0; i < 100000; ++i) {
        table = table->CreateCurrentScopeTable();
        AddFloat(table, "v" + std::to_string(i));
    }
    for (int i = 0; i < 100000; ++i)
        ASSERT_EQ(FindOrNull(table, "first"), first);
}

TEST(SlcVarSymbolEntry, SharesTheOperandOfTheVariableOfAnExtern)
{
    const auto table = MakeShared<SlcSymbolTable>();
    const auto outer = table->AddVarEntry(Ident("x"), T::AFloat(), SlcDetailNode::AUniform(),
                                          SlcStorageSpecNode::ALocal(), false, "o_x", nullptr);
    const auto alias = table->AddVarEntry(Ident("x"), T::AFloat(), SlcDetailNode::AUniform(),
                                          SlcStorageSpecNode::AExtern(), false, nullptr, outer);
    EXPECT_FALSE(outer->GetIntCodeVar().Null());
    EXPECT_EQ(&alias->GetIntCodeVar(), &outer->GetIntCodeVar());
}
