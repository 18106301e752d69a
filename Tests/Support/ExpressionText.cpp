#include "Support/ExpressionText.h"

#include <array>
#include <charconv>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::schema;

constexpr std::array<std::string_view, 3> UnaryTexts{"+", "-", "NOT"};
constexpr std::array<std::string_view, 18> BinaryTexts{
    "+", "-",  "*",   "/",    "AND", "OR", "XOR", "MOD", "**",
    "=", "<>", ":=:", ":<>:", "<",   ">",  "<=",  ">=",  "IN"};
constexpr std::array<std::string_view, 2> IntervalTexts{"<", "<="};
constexpr std::array<std::string_view, 2> ConstantTexts{"SELF", "?"};
constexpr std::array<std::string_view, 3> LogicalTexts{"TRUE", "FALSE", "UNKNOWN"};

/// The text of an enumerator; a value beyond the table is an exception, which fails the test.
template <typename Table, typename Enumerator>
std::string sOf(const Table& table, Enumerator value) {
    return std::string(table.at(static_cast<std::size_t>(value)));
}

std::string sDouble(double value) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    std::string text(buffer.data(), end);
    if (text.find_first_of(".en") == std::string::npos)
        text += ".0";
    return text;
}

/// Writes the part of a node that comes before its left child, and says which child that is.
class Opening : public ExpressionVisitor {
public:
    /// The child that continues the chain to the left; null where the chain ends, the node then being written
    /// whole.
    const Expression* pOpen(const Expression& node) {
        left_ = nullptr;
        node.accept(*this);
        return left_;
    }

    void vWrite(const Expression& node);

    std::string takeText() { return std::move(text_); }

    void visit(const BinaryExpression& node) override {
        text_ += '(';
        left_ = &node.getLeft();
    }

    void visit(const GetExpression& node) override {
        left_ = node.pBase();
        if (!left_)
            text_ += node.getQualifier() == Qualifier::None ? node.getName() : "<qualifier without base>";
    }

    void visit(const QueryExpression& node) override {
        text_ += "QUERY(" + std::string(node.getVariable()) + " <* ";
        vWrite(node.getSource());
        text_ += " | ";
        vWrite(node.getCondition());
        vClose(')');
    }

    void visit(const EnumerationValueExpression& node) override {
        text_ += std::string(node.getTypeName()).append("::").append(node.getValueName());
    }

    void visit(const LogicalValueExpression& node) override { text_ += sOf(LogicalTexts, node.getValue()); }
    void visit(const DoubleValueExpression& node) override { text_ += sDouble(node.getValue()); }
    void visit(const IntegerValueExpression& node) override { text_ += std::to_string(node.getValue()); }
    void visit(const StringValueExpression& node) override {
        text_ += '\'' + std::string(node.getValue()) + '\'';
    }
    void visit(const ConstantExpression& node) override { text_ += sOf(ConstantTexts, node.getConstant()); }

    void visit(const RepetitionExpression& node) override {
        text_ += '(';
        vWrite(node.getElement());
        text_ += " : ";
        vWrite(node.getCount());
        vClose(')');
    }

    void visit(const AggregateInitializerExpression& node) override {
        text_ += '[';
        vListWrite(node.getElements());
        vClose(']');
    }

    void visit(const FunctionCallExpression& node) override {
        text_ += std::string(node.getName()) + '(';
        vListWrite(node.getArguments());
        vClose(')');
    }

    void visit(const IntervalExpression& node) override {
        text_ += '{';
        vWrite(node.getLow());
        text_ += ' ' + sOf(IntervalTexts, node.getLowOperator()) + ' ';
        vWrite(node.getItem());
        text_ += ' ' + sOf(IntervalTexts, node.getHighOperator()) + ' ';
        vWrite(node.getHigh());
        vClose('}');
    }

    void visit(const UnaryExpression& node) override {
        text_ += '(' + sOf(UnaryTexts, node.getOperator()) + ' ';
        vWrite(node.getOperand());
        vClose(')');
    }

    void vText(std::string_view text) { text_ += text; }

private:
    /// Ends a node that was written whole; its children have ended their own chains.
    void vClose(char bracket) {
        text_ += bracket;
        left_ = nullptr;
    }

    void vListWrite(const ExpressionList& nodes) {
        std::string_view separator;
        for (const auto& node : nodes) {
            text_ += separator;
            vWrite(*node);
            separator = ", ";
        }
    }

    std::string text_;
    const Expression* left_ = nullptr;
};

/// Writes the part of a node that comes after its left child.
class Closing : public ExpressionVisitor {
public:
    explicit Closing(Opening& writer) : writer_(writer) {}

    void visit(const BinaryExpression& node) override {
        writer_.vText(' ' + sOf(BinaryTexts, node.getOperator()) + ' ');
        writer_.vWrite(node.getRight());
        writer_.vText(")");
    }

    void visit(const GetExpression& node) override {
        switch (node.getQualifier()) {
        case Qualifier::None:
            return writer_.vText("<base without qualifier>");
        case Qualifier::Group:
            return writer_.vText('\\' + std::string(node.getName()));
        case Qualifier::Attribute:
            return writer_.vText('.' + std::string(node.getName()));
        case Qualifier::Index:
            return vIndexWrite(node);
        }
    }

    // The other classes have no left child.
    void visit(const QueryExpression&) override {}
    void visit(const EnumerationValueExpression&) override {}
    void visit(const LogicalValueExpression&) override {}
    void visit(const DoubleValueExpression&) override {}
    void visit(const IntegerValueExpression&) override {}
    void visit(const StringValueExpression&) override {}
    void visit(const RepetitionExpression&) override {}
    void visit(const AggregateInitializerExpression&) override {}
    void visit(const IntervalExpression&) override {}
    void visit(const FunctionCallExpression&) override {}
    void visit(const ConstantExpression&) override {}
    void visit(const UnaryExpression&) override {}

private:
    void vIndexWrite(const GetExpression& node) {
        writer_.vText(std::string(node.getName()) + '[');
        writer_.vWrite(*node.pIndex());
        if (node.pIndexEnd()) {
            writer_.vText(":");
            writer_.vWrite(*node.pIndexEnd());
        }
        writer_.vText("]");
    }

    Opening& writer_;
};

void Opening::vWrite(const Expression& node) {
    std::vector<const Expression*> chain;
    const Expression* current = &node;
    while (const auto* left = pOpen(*current)) {
        chain.push_back(current);
        current = left;
    }
    Closing closing(*this);
    for (auto link = chain.rbegin(); link != chain.rend(); ++link)
        (*link)->accept(closing);
    left_ = nullptr;
}

} // namespace

std::string sExpressionText(const Expression& expression) {
    Opening writer;
    writer.vWrite(expression);
    return writer.takeText();
}

} // namespace kiv::test
