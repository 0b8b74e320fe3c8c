// Readable text of an expression tree, for tests and debugging.
#include "expr/TyxEqnTreeText.h"

#include <charconv>
#include <sstream>
#include <vector>

#include "expr/TyxConstNode.h"
#include "expr/TyxFcnNode.h"
#include "expr/TyxVarNode.h"

namespace tyx::internal {

namespace {

void appendValue(std::string &out, const TyxVariant &value)
{
    switch (value.type().toEnum()) {
    case TyxMetaType::Double: {
        char buffer[32];
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, value.value<double>());
        out.append(buffer, result.ptr);
        break;
    }
    case TyxMetaType::String: out += '"' + toUTF8(value.value<TyxString>()) + '"'; break;
    case TyxMetaType::Invalid: out += "<invalid>"; break;
    default: {
        std::ostringstream text;
        text << value;
        out += '{' + text.str() + '}';
        break;
    }
    }
}

// Writes a leaf whole; a function only up to its opening parenthesis, and
// returns it so that the caller goes on with its arguments.
const TyxFcnNode *appendNode(std::string &out, const TyxEqnNode *node)
{
    if (!node) {
        out += "<null>";
    } else if (const TyxFcnNode *fcn = node->toFcnNode()) {
        out += toUTF8(fcn->name()) + '(';
        return fcn;
    } else if (const TyxVarNode *var = node->toVarNode()) {
        out += toUTF8(var->name());
        if (var->isValid()) {
            out += '=';
            appendValue(out, var->value());
        }
    } else if (const TyxConstNode *constant = node->toConstNode()) {
        appendValue(out, constant->value());
    }
    return nullptr;
}

} // namespace

std::string eqnTreeText(const TyxEqnNode *node)
{
    struct Frame {
        const TyxFcnNode *fcn;
        std::size_t next;
    };
    std::string out;
    std::vector<Frame> open;
    if (const TyxFcnNode *fcn = appendNode(out, node))
        open.push_back({fcn, 0});
    while (!open.empty()) {
        Frame &top = open.back();
        if (top.next == top.fcn->args().size()) {
            out += ')';
            open.pop_back();
            continue;
        }
        if (top.next > 0)
            out += ", ";
        const TyxEqnNode *arg = top.fcn->args()[top.next++].get();
        if (const TyxFcnNode *fcn = appendNode(out, arg))
            open.push_back({fcn, 0});
    }
    return out;
}

} // namespace tyx::internal
