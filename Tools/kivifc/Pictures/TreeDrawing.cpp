#include "kivifc/Pictures/TreeDrawing.h"

#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <fmt/format.h>
#include <string>
#include <vector>

namespace kiv::kivifc {

namespace {

using ifc::def::schema::Entity;

/// An entity that is to be drawn.
struct Branch {
    const Entity* entity;
    /// 0 for the top.
    std::size_t level;
    bool isLast;
};

class Drawing {
public:
    Drawing(const InheritanceTree& tree, Output& output) : tree_(tree), output_(output) {}

    void vDraw(const Entity& top) {
        waiting_.push_back({&top, 0, true});
        while (!waiting_.empty()) {
            const auto branch = waiting_.back();
            waiting_.pop_back();
            vLineDraw(branch);
            vChildrenAdd(branch);
        }
    }

private:
    void vLineDraw(const Branch& branch) {
        indent_.resize(std::min(indent_.size(), 4 * std::min(branch.level, TreeIndentMax)));
        // The top has no sign before it, so the first four columns of the indentation are never drawn.
        std::string line = indent_.size() > 4 ? indent_.substr(4) : std::string();
        if (branch.level > 0)
            line += branch.isLast ? "`-- " : "|-- ";
        if (branch.level > TreeIndentMax)
            line += fmt::format("({}) ", branch.level + 1);
        line += sOneLine(branch.entity->getName());
        line += branch.entity->isAbstract() ? " (abstract)\n" : "\n";
        output_.vWrite(line);
        if (branch.level < TreeIndentMax)
            indent_ += branch.isLast ? "    " : "|   ";
    }

    /// The first child comes on top, to be drawn next.
    void vChildrenAdd(const Branch& branch) {
        const auto& children = tree_.getChildren(*branch.entity);
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            waiting_.push_back({*child, branch.level + 1, child == children.rbegin()});
    }

    const InheritanceTree& tree_;
    Output& output_;
    std::vector<Branch> waiting_;
    // The text before the children of the entity that was drawn last: four columns for each level above them.
    std::string indent_;
};

} // namespace

void vTreeDraw(const InheritanceTree& tree, const Entity& top, Output& output) {
    Drawing(tree, output).vDraw(top);
}

} // namespace kiv::kivifc
