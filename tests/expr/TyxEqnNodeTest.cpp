// Tests of the expression tree nodes: casts, copies, search and teardown of deep trees.
#include "expr/TyxEqnNode.h"

#include <complex>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <tyx/TyxTextMsg.h>

#include "expr/TyxConstNode.h"
#include "expr/TyxEqnTreeText.h"
#include "expr/TyxFcnNode.h"
#include "expr/TyxVarNode.h"

namespace {

using namespace tyx;
using namespace tyx::internal;

TyxEqnNodePtr constant(double value) { return TyxEqnNodePtr(new TyxConstNode(TyxVariant(value))); }

TyxEqnNodePtr variable(const char *name) { return TyxEqnNodePtr(new TyxVarNode(TyxString(name))); }

TyxEqnNodePtr call(const char *name, TyxEqnNodeList args)
{
    return TyxEqnNodePtr(new TyxFcnNode(TyxString(name), std::move(args)));
}

// The node as a function, through the const interface that offers args().
const TyxFcnNode *fcn(const TyxEqnNodePtr &node)
{
    return static_cast<const TyxEqnNode *>(node.get())->toFcnNode();
}

TEST(TyxEqnNodeTest, OwnersAreCounted)
{
    auto *node = new TyxVarNode(TyxString("x"));
    EXPECT_EQ(node->refCount().load(), 0);
    const TyxEqnNodePtr owner(node);
    EXPECT_EQ(node->refCount().load(), 1);
    EXPECT_EQ(node->clone()->refCount().load(), 1);

    // A shared subtree outlives its parent.
    const TyxEqnNodePtr shared = call("g", {call("h", {variable("x")})});
    {
        const TyxEqnNodePtr parent = call("f", {shared, shared});
        EXPECT_EQ(shared->refCount().load(), 3);
    }
    EXPECT_EQ(shared->refCount().load(), 1);
    EXPECT_EQ(eqnTreeText(shared.get()), "g(h(x))");
}

TEST(TyxEqnNodeTest, StoredValuesAreNormalised)
{
    // Other numeric types become Double and complex numbers scalars; text
    // and Double are shared as they are.
    struct Case {
        TyxVariant value;
        const char *text;
        TyxMetaType::Code type;
    };
    const Case cases[] = {
        {TyxVariant(int64_t(-7)), "-7", TyxMetaType::Double},
        {TyxVariant(1e300), "1e+300", TyxMetaType::Double},
        {TyxVariant(std::complex<double>(1.0, -2.0)), "{TyxScalar,(1,-2)}", TyxMetaType::Scalar},
        {TyxVariant(TyxString(L"km/h")), "\"km/h\"", TyxMetaType::String},
        {TyxVariant(), "<invalid>", TyxMetaType::Invalid},
    };
    for (const Case &c : cases) {
        const TyxEqnNodePtr node(new TyxConstNode(c.value));
        EXPECT_EQ(eqnTreeText(node.get()), c.text);
        EXPECT_EQ(eqnTreeText(node->clone().get()), c.text);
        const TyxVariant &stored = node->toConstNode()->value();
        EXPECT_EQ(stored.type(), c.type) << c.text;
        TyxVarNode var{TyxString("v")};
        var.setValue(c.value);
        EXPECT_EQ(var.value().type(), c.type) << c.text;
        if (c.type == c.value.type()) {
            EXPECT_EQ(&stored.impl(), &c.value.impl()) << c.text;
        }
    }
    EXPECT_EQ(eqnTreeText(nullptr), "<null>");
}

TEST(TyxEqnNodeTest, VariablesTakeValuesAndClonesAreDeep)
{
    const TyxEqnNodePtr x = variable("x");
    TyxVarNode *var = x->toVarNode();
    EXPECT_FALSE(var->isValid());
    var->setValue(TyxVariant(2.5));
    EXPECT_TRUE(var->isValid());
    const TyxEqnNodePtr tree = call("add", {call("subscript", {x, nullptr, constant(1)}), x});
    const TyxEqnNodePtr copy = tree->clone();
    EXPECT_EQ(eqnTreeText(copy.get()), "add(subscript(x=2.5, <null>, 1), x=2.5)");

    // No node is shared with the source: a shared variable becomes two, each
    // with the value the source had.
    const TyxFcnNode *inner = fcn(fcn(copy)->args()[0]);
    EXPECT_NE(inner->args()[0].get(), x.get());
    EXPECT_NE(fcn(copy)->args()[1].get(), x.get());
    EXPECT_NE(inner->args()[0].get(), fcn(copy)->args()[1].get());
    var->setValue(TyxVariant());
    EXPECT_FALSE(var->isValid());
    EXPECT_EQ(eqnTreeText(tree.get()), "add(subscript(x, <null>, 1), x)");
    EXPECT_EQ(eqnTreeText(copy.get()), "add(subscript(x=2.5, <null>, 1), x=2.5)");
}

TEST(TyxEqnNodeTest, SearchAndEvaluation)
{
    const TyxEqnNodePtr deepH = call("h", {constant(1)});
    const TyxEqnNodePtr laterH = call("h", {constant(2)});
    const TyxEqnNodePtr tree =
        call("f", {nullptr, variable("h"), call("g", {call("k", {deepH})}), laterH, call("H", {})});
    const TyxFcnNode *root = tree->toFcnNode();
    EXPECT_EQ(root->node(TyxString("f")).get(), tree.get());
    EXPECT_EQ(root->node(TyxString("h")).get(), deepH.get());
    EXPECT_EQ(root->node(TyxString("k"))->toFcnNode()->name(), L"k");
    // Variables are not functions, and names compare exactly.
    EXPECT_FALSE(root->node(TyxString("x")));
    EXPECT_FALSE(laterH->toFcnNode()->node(TyxString("f")));

    // An unknown function refuses to evaluate.
    try {
        call("nosuch", {constant(1)})->evaluate();
        FAIL() << "no exception";
    } catch (const TyxTextMsg &msg) {
        EXPECT_EQ(msg.text(), L"'nosuch()' is not a valid parametric function.");
    }
}

TEST(TyxEqnNodeTest, VeryDeepChainsCloneAndDieWithoutRecursion)
{
    // Far deeper than any call stack could follow node by node.
    const int depth = 200000;
    TyxEqnNodePtr chain = variable("x");
    for (int i = 0; i < depth; ++i)
        chain = call(i % 2 ? "f" : "g", {chain, constant(i)});
    TyxEqnNodePtr copy = chain->clone();
    EXPECT_EQ(eqnTreeText(copy.get()), eqnTreeText(chain.get()));
    EXPECT_EQ(chain->toFcnNode()->node(TyxString("nothing")).get(), nullptr);
    chain = nullptr;
    EXPECT_EQ(fcn(copy)->args()[1]->toConstNode()->value().isValid(), true);
    copy = nullptr;
}

} // namespace
