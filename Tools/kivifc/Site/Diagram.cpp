#include "kivifc/Site/Diagram.h"

#include "kivifc/Program/CodePoints.h"
#include "kivifc/Site/Elements.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using ifc::def::schema::Entity;

// In units of the drawing, which are pixels unless it is scaled down.
constexpr long long RowHeight = 32;
constexpr long long BoxHeight = 24;
constexpr long long Indent = 22;
constexpr long long LetterWidth = 8;
constexpr long long BoxPadding = 10;

/// Rows that a reader still takes in at once.
constexpr std::size_t RowsBelowMax = 40;
constexpr std::size_t SupertypesMax = 20;
/// Columns of letters of a box; the page has the whole name.
constexpr std::size_t LettersMax = 48;

struct Row {
    /// Null for a row that says how many more there are.
    const Entity* entity;
    std::size_t depth;
    /// The row that the line comes from; the row itself for the first.
    std::size_t parent;
    /// Entities that are not shown: below this one, or in place of this row.
    std::size_t hidden;
};

long long boxWidth(std::string_view label) {
    return static_cast<long long>(escapedWidth(label)) * LetterWidth + 2 * BoxPadding;
}

std::string sLabel(std::string_view name) {
    constexpr std::string_view Dots = "...";
    // Of a name of megabytes, no more than can be shown is looked at.
    auto whole = sShort(name);
    if (escapedWidth(whole) <= LettersMax)
        return whole;
    std::string label;
    std::size_t width = 0;
    for (std::string_view rest = whole; !rest.empty();) {
        const auto bytes = codePointTake(rest).bytes;
        width += escapedWidth(bytes);
        if (width > LettersMax - Dots.size())
            break;
        label += bytes;
    }
    return label.append(Dots);
}

/// Chooses what is shown.
class Rows {
public:
    Rows(const SiteModel& model, const Entity& entity) : model_(model), entity_(entity) {
        vLineAdd();
        vShownChoose();
        vBelowAdd();
    }

    const std::vector<Row>& getRows() const { return rows_; }

private:
    void vLineAdd() {
        std::vector<const Entity*> line;
        for (const auto* each = &entity_; each && line.size() <= SupertypesMax; each = each->pSupertype())
            line.push_back(each);
        if (line.back()->pSupertype())
            vRowAdd(nullptr, 0, 0, model_.depthOf(*line.back()));
        for (auto each = line.rbegin(); each != line.rend(); ++each)
            vRowAdd(*each, rows_.size(), rows_.empty() ? 0 : rows_.size() - 1, 0);
    }

    /// Whole levels, as long as there is room; of the first level what there is room for.
    void vShownChoose() {
        auto level = model_.getTree().getChildren(entity_);
        if (level.size() > RowsBelowMax)
            level.resize(RowsBelowMax);
        while (!level.empty() && shown_.size() + level.size() <= RowsBelowMax) {
            shown_.insert(level.begin(), level.end());
            std::vector<const Entity*> next;
            for (const auto* entity : level) {
                const auto& children = model_.getTree().getChildren(*entity);
                next.insert(next.end(), children.begin(), children.end());
                if (next.size() > RowsBelowMax)
                    return;
            }
            level = std::move(next);
        }
    }

    /// At most as deep as there are rows, so that it may recurse.
    void vBelowAdd() { vChildrenAdd(entity_, rows_.size() - 1); }

    void vChildrenAdd(const Entity& entity, std::size_t parent) {
        std::size_t hidden = 0;
        const auto depth = rows_[parent].depth + 1;
        for (const auto* child : model_.getTree().getChildren(entity)) {
            if (!shown_.contains(child)) {
                hidden += 1 + model_.countBelow(*child);
                continue;
            }
            const auto row = rows_.size();
            vRowAdd(child, depth, parent, 0);
            vChildrenAdd(*child, row);
        }
        if (hidden == 0)
            return;
        const bool isAnyShown = rows_.size() > parent + 1;
        if (isAnyShown)
            return vRowAdd(nullptr, depth, parent, hidden);
        rows_[parent].hidden = hidden;
    }

    void vRowAdd(const Entity* entity, std::size_t depth, std::size_t parent, std::size_t hidden) {
        rows_.push_back({entity, depth, parent, hidden});
    }

    const SiteModel& model_;
    const Entity& entity_;
    std::unordered_set<const Entity*> shown_;
    std::vector<Row> rows_;
};

class Drawing {
public:
    Drawing(const SiteModel& model, const Entity& entity, const std::vector<Row>& rows, Html& html) :
        model_(model), entity_(entity), rows_(rows), html_(html) {}

    void vWrite() {
        const auto height = static_cast<long long>(rows_.size()) * RowHeight;
        html_ << "<figure class=\"diagram\"><div class=\"scroll\" tabindex=\"0\" role=\"region\" "
                 "aria-labelledby=\"diagram-title\"><svg xmlns=\"http://www.w3.org/2000/svg\" role=\"group\" "
                 "aria-labelledby=\"diagram-title\""
              << attribute("width", width()) << attribute("height", height)
              << attribute("viewBox", "0 0 " + std::to_string(width()) + " " + std::to_string(height))
              << ">\n<title id=\"diagram-title\">Supertypes and subtypes of "
              << escaped(sShort(entity_.getName())) << "</title>\n";
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            vLineWrite(row);
            vBoxWrite(row);
        }
        html_ << "</svg></div>";
        const auto isAbstract = [](const Row& row) { return row.entity && row.entity->isAbstract(); };
        if (std::ranges::any_of(rows_, isAbstract))
            html_ << "<figcaption>Dashed: abstract</figcaption>";
        html_ << "</figure>\n";
    }

private:
    long long left(std::size_t row) const { return static_cast<long long>(rows_[row].depth) * Indent + 1; }
    static long long top(std::size_t row) {
        return static_cast<long long>(row) * RowHeight + (RowHeight - BoxHeight) / 2;
    }

    /// What is said of entities that are not shown; empty for none.
    static std::string sHidden(const Row& row) {
        if (row.hidden == 0)
            return {};
        const auto number = std::to_string(row.hidden);
        if (!row.entity)
            return "and " + number + " more";
        return "+ " + number + " below";
    }

    long long width() const {
        long long widest = 0;
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            const auto hidden = sHidden(rows_[row]);
            const auto* entity = rows_[row].entity;
            const auto box = entity ? boxWidth(sLabel(entity->getName())) : 0;
            widest = std::max(widest, left(row) + box + (hidden.empty() ? 2 : boxWidth(hidden)));
        }
        return widest;
    }

    void vLineWrite(std::size_t row) {
        const auto parent = rows_[row].parent;
        if (parent == row)
            return;
        const auto x = left(parent) + Indent / 2;
        const auto path = "M" + std::to_string(x) + " " + std::to_string(top(parent) + BoxHeight) + "V" +
                          std::to_string(top(row) + BoxHeight / 2) + "H" + std::to_string(left(row));
        html_ << "<path class=\"line\"" << attribute("d", path) << "/>";
    }

    void vBoxWrite(std::size_t row) {
        const auto* entity = rows_[row].entity;
        auto right = left(row);
        if (entity) {
            const auto label = sLabel(entity->getName());
            const bool isSelf = entity == &entity_;
            if (isSelf)
                html_ << "<g class=\"here\">";
            else
                html_ << "<a" << href(model_.getAddresses().of(*entity)) << ">";
            html_ << "<rect" << attribute("class", entity->isAbstract() ? "box abstract" : "box")
                  << attribute("x", left(row)) << attribute("y", top(row))
                  << attribute("width", boxWidth(label)) << attribute("height", BoxHeight)
                  << attribute("rx", 4) << "/>";
            vTextWrite("name", left(row) + BoxPadding, row, label);
            html_ << (isSelf ? Markup("</g>") : Markup("</a>"));
            right += boxWidth(label);
        }
        if (const auto hidden = sHidden(rows_[row]); !hidden.empty()) {
            html_ << "<a" << href(Address(EntitiesPage).row(ownerOf(row).getName())) << ">";
            vTextWrite("more", right + BoxPadding, row, hidden);
            html_ << "</a>";
        }
        html_ << "\n";
    }

    /// The entity in whose part of the whole tree those are that a row does not show. Of those above the
    /// first one shown, the tree has them above it.
    const Entity& ownerOf(std::size_t row) const {
        if (rows_[row].entity)
            return *rows_[row].entity;
        const auto parent = rows_[row].parent;
        return *rows_[parent == row ? row + 1 : parent].entity;
    }

    void vTextWrite(std::string_view kind, long long x, std::size_t row, std::string_view text) {
        constexpr long long Baseline = 17;
        html_ << "<text" << attribute("class", kind) << attribute("x", x)
              << attribute("y", top(row) + Baseline) << ">" << escaped(text) << "</text>";
    }

    const SiteModel& model_;
    const Entity& entity_;
    const std::vector<Row>& rows_;
    Html& html_;
};

} // namespace

void vDiagramWrite(const SiteModel& model, const Entity& entity, Html& html) {
    const Rows rows(model, entity);
    Drawing(model, entity, rows.getRows(), html).vWrite();
}

} // namespace kiv::kivifc::site
