// Expression parser front end: parses expression text, holds variables and evaluates.
#include <tyx/TyxEqnParser.h>

#include <map>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include <tyx/TyxMathConst.h>

#include "TyxBisonParser.h"
#include "core/TyxPost.h"
#include "expr/TyxConstNode.h"
#include "expr/TyxEqnBlockPlan.h"
#include "expr/TyxEqnBudget.h"
#include "expr/TyxEqnFunctions.h"
#include "expr/TyxFcnNode.h"
#include "expr/TyxFlexScanner.h"
#include "expr/TyxVarNode.h"

namespace tyx {

using internal::TyxConstNode;
using internal::TyxEqnNode;
using internal::TyxEqnNodePtr;
using internal::TyxFcnNode;
using internal::TyxVarNode;
using internal::TyxVarNodePtr;

struct TyxEqnParser::Body {
    struct Entry {
        TyxString name;
        TyxEqnNodePtr root;
    };

    std::vector<Entry> entries;
    TyxString expression;
    std::map<TyxString, std::vector<TyxVarNodePtr>> variables;
    TyxStrList names;
    TyxVariant result;
    TyxTextMsg message;
    Limits limits;
    // Set when a variable received a value of another type than it held:
    // the function bodies then look at their operand types again.
    bool respecialise = false;
    // Whether the element-wise subtrees of the entries have their block
    // plans; a parse, a folding collapse or new bodies drop them.
    bool planned = false;

    void clear()
    {
        planned = false;
        if (expression.empty())
            return;
        entries.clear();
        variables.clear();
        names.clear();
        expression.clear();
        message.clear();
        result.clear();
        respecialise = false;
    }

    bool isEntryName(const TyxString &name, size_t entryCount) const
    {
        for (size_t i = 0; i < entryCount && i < entries.size(); ++i) {
            if (entries[i].name == name)
                return true;
        }
        return false;
    }

    // Registers the variables of entry \p index and checks its function
    // names; \p errorText receives the first unknown one. The name of a
    // variable is listed when it is new to the table, unless it names an
    // entry that exists so far and more than one entry exists: the main
    // expression, walked alone, lists every name it uses.
    void walk(size_t index, TyxString &errorText)
    {
        std::vector<TyxEqnNode *> pending{entries[index].root.get()};
        while (!pending.empty()) {
            TyxEqnNode *node = pending.back();
            pending.pop_back();
            if (!node)
                continue; // an omitted index or the end of a matrix row
            if (TyxVarNode *var = node->toVarNode()) {
                auto found = variables.find(var->name());
                if (found == variables.end()) {
                    found = variables.emplace(var->name(), std::vector<TyxVarNodePtr>()).first;
                    if (index + 1 < 2 || !isEntryName(var->name(), index + 1))
                        names.push_back(var->name());
                }
                found->second.push_back(TyxVarNodePtr(var));
            } else if (const TyxFcnNode *fcn = node->toFcnNode()) {
                if (errorText.empty() && !internal::TyxEqnFunctions::contains(fcn->name()))
                    errorText = L"'" + fcn->name() + L"()' is not a valid parametric function.";
                for (auto arg = fcn->args().rbegin(); arg != fcn->args().rend(); ++arg)
                    pending.push_back(arg->get());
            }
        }
    }

    void setNodes(const TyxString &name, const TyxVariant &value)
    {
        const auto found = variables.find(name);
        if (found == variables.end())
            return;
        result.clear();
        for (const TyxVarNodePtr &var : found->second) {
            const TyxMetaType before = var->value().type();
            var->setValue(value);
            if (before.isValid() && before != var->value().type())
                respecialise = true;
        }
    }

    void copyFrom(const Body &other)
    {
        clear();
        limits = other.limits;
        if (!other.entries.empty() && other.entries.front().root && other.message.empty()) {
            expression = other.expression;
            result = other.result;
            TyxString ignored;
            for (const Entry &entry : other.entries) {
                entries.push_back({entry.name, entry.root ? entry.root->clone() : TyxEqnNodePtr()});
                walk(entries.size() - 1, ignored);
            }
            // The source's list, duplicates from a collapse included, rather
            // than the one the walk has just built.
            names = other.names;
            for (const TyxString &name : names) {
                const auto found = other.variables.find(name);
                static const TyxVariant invalid;
                const TyxVariant &value = found == other.variables.end() || found->second.empty()
                                              ? invalid
                                              : found->second.front()->value();
                const auto mine = variables.find(name);
                if (mine != variables.end()) {
                    for (const TyxVarNodePtr &var : mine->second)
                        var->setValue(value);
                }
            }
        } else {
            expression = other.expression;
            message = other.message;
        }
    }
};

TyxEqnParser::TyxEqnParser() : m_body(std::make_unique<Body>()) {}

TyxEqnParser::TyxEqnParser(const TyxEqnParser &other) : TyxObject(other), m_body(std::make_unique<Body>())
{
    m_body->copyFrom(*other.m_body);
}

TyxEqnParser &TyxEqnParser::operator=(const TyxEqnParser &other)
{
    if (this != &other)
        m_body->copyFrom(*other.m_body);
    return *this;
}

TyxEqnParser::~TyxEqnParser() = default;

TyxString TyxEqnParser::className() const { return L"TyxEqnParser"; }

int TyxEqnParser::parse(const TyxString &text, TyxTextMsg *msg)
{
    Body &body = *m_body;
    body.clear();
    if (text.empty())
        return 0;
    body.expression = text;

    internal::TyxEqnEntries parsed;
    std::string errorText;
    int status = 1;
    try {
        std::istringstream in(toUTF8(text));
        internal::TyxFlexScanner scanner(in);
        internal::TyxBisonParser parser(scanner, parsed, errorText);
        status = parser.parse();
    } catch (...) {
        status = 1;
    }
    TyxString error = fromUTF8(errorText);
    if (status != 0 && error.empty())
        error = L"Unknown exception from parametric expression parser.";

    if (status == 0) {
        for (auto &[name, root] : parsed) {
            body.entries.push_back({fromUTF8(name), root});
            body.walk(body.entries.size() - 1, error);
        }
        // Names of constants need no value from the caller; setValue can
        // still override them.
        for (const auto &[name, nodes] : body.variables) {
            const TyxMathConst constant(name);
            if (!constant.isValid())
                continue;
            body.result.clear();
            const TyxVariant value(constant.value());
            for (const TyxVarNodePtr &var : nodes)
                var->setValue(value);
        }
    }

    if (!error.empty()) {
        body.message = TyxTextMsg(error, __FILE__, __LINE__, TyxTextMsg::Error);
        body.entries.clear();
        body.variables.clear();
        body.names.clear();
    }
    if (body.message.empty())
        return 0;
    if (msg)
        *msg = body.message;
    return 1;
}

const TyxVariant &TyxEqnParser::evaluate(TyxTextMsg *msg)
{
    Body &body = *m_body;
    if (body.result.isValid())
        return body.result;
    if (body.respecialise) {
        for (const Body::Entry &entry : body.entries) {
            if (TyxFcnNode *fcn = entry.root ? entry.root->toFcnNode() : nullptr)
                fcn->resetBodies();
        }
        body.respecialise = false;
        body.planned = false;
    }
    if (!body.planned) {
        for (const Body::Entry &entry : body.entries)
            internal::TyxEqnBlockPlan::attach(entry.root.get());
        body.planned = true;
    }
    try {
        const internal::TyxEqnBudget::Scope budget(body.limits);
        TyxVariant kept;
        for (auto entry = body.entries.rbegin(); entry != body.entries.rend(); ++entry) {
            const TyxVariant &value = entry->root->evaluate();
            kept = value;
            if (entry->name.empty())
                continue;
            body.setNodes(entry->name, value);
            // A definition whose type changed: the entries still to run
            // look at their operand types again.
            if (body.respecialise) {
                for (auto rest = entry + 1; rest != body.entries.rend(); ++rest) {
                    if (TyxFcnNode *fcn = rest->root ? rest->root->toFcnNode() : nullptr)
                        fcn->resetBodies();
                }
                body.planned = false;
            }
        }
        body.result = kept;
    } catch (const TyxTextMsg &failure) {
        if (msg)
            *msg = failure;
        body.result.clear();
    } catch (const std::bad_alloc &) {
        // Memory ran out on the way: the same failure as any other, never
        // an exception of the standard library.
        body.result.clear();
        if (msg)
            *msg = TyxTextMsg(L"Not enough memory to evaluate the expression.", __FILE__, __LINE__,
                              TyxTextMsg::Error);
    }
    return body.result;
}

int TyxEqnParser::collapse()
{
    Body &body = *m_body;
    if (body.entries.empty())
        return 0;
    // Folding drops the plans of the nodes it visits.
    body.planned = false;
    int total = 0;
    const internal::TyxEqnBudget::Scope budget(body.limits);
    for (auto entry = body.entries.rbegin(); entry != body.entries.rend(); ++entry) {
        TyxFcnNode *fcn = entry->root ? entry->root->toFcnNode() : nullptr;
        while (fcn) {
            int counter = 0;
            TyxEqnNodePtr folded;
            try {
                folded = fcn->collapse(&counter);
            } catch (const std::bad_alloc &) {
                internal::TyxEqnBudget::throwOutOfMemory(__FILE__, __LINE__);
            }
            total += counter;
            if (folded)
                entry->root = folded;
            fcn = counter >= 1 ? entry->root->toFcnNode() : nullptr;
        }
        if (!entry->root)
            continue;
        if (const TyxVarNode *var = entry->root->toVarNode(); var && var->isValid()) {
            // The total becomes 1 here, whatever it was: the count of this
            // case is not added to the others.
            entry->root = TyxEqnNodePtr(new TyxConstNode(var->value()));
            total = 1;
        }
    }
    if (total >= 1) {
        // The names are not emptied: a variable that survives the folding
        // is listed again by the new walk.
        body.variables.clear();
        body.message.clear();
        body.result.clear();
        TyxString ignored;
        for (size_t i = 0; i < body.entries.size(); ++i)
            body.walk(i, ignored);
    }
    return total;
}

void TyxEqnParser::setValue(const TyxString &name, const TyxVariant &value) { m_body->setNodes(name, value); }

const TyxVariant &TyxEqnParser::value(const TyxString &name) const
{
    static const TyxVariant invalid;
    const auto found = m_body->variables.find(name);
    if (found == m_body->variables.end() || found->second.empty())
        return invalid;
    return found->second.front()->value();
}

const TyxStrList &TyxEqnParser::variables() const { return m_body->names; }

const TyxString &TyxEqnParser::expression() const { return m_body->expression; }

void TyxEqnParser::setLimits(const Limits &limits) { m_body->limits = limits; }

const TyxEqnParser::Limits &TyxEqnParser::limits() const { return m_body->limits; }

int TyxEqnParser::createFunctionAlias(const TyxString &existing, const TyxString &alias)
{
    return internal::TyxEqnFunctions::createAlias(existing, alias);
}

} // namespace tyx
