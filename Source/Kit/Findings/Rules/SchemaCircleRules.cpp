#include "Kit/Findings/Rules/SchemaRules.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// E021: entities that are their own supertypes, and types that are defined by themselves.
namespace kiv::kit {

namespace {

using Kind = ExpressDeclarationKind;

/// A name by which one declaration is defined by another.
struct Link {
    const ExpressWord* word = nullptr;
    std::size_t target = 0;
};

/// Goes along the links from declaration to declaration, without recursion, as they may be many.
class CircleSearch {
public:
    explicit CircleSearch(SchemaRun& run) : run_(run), states_(run.declared.size()) {}

    void vSearch();

private:
    enum class State : std::uint8_t { New, OnPath, Done };
    struct Step {
        std::size_t index = 0;
        std::vector<Link> links;
        std::size_t next = 0;
    };

    void vStep(std::size_t index);
    void vGo(Step& step);
    std::vector<Link> linksOf(std::size_t index);
    void vCircleAdd(std::size_t first);

    SchemaRun& run_;
    std::vector<State> states_;
    std::vector<Step> path_;
    std::size_t circleCount_ = 0;
};

void CircleSearch::vSearch() {
    for (std::size_t index = 0; index < states_.size(); ++index) {
        if (states_[index] == State::New)
            vStep(index);
        while (!path_.empty())
            vGo(path_.back());
    }
}

void CircleSearch::vStep(std::size_t index) {
    states_[index] = State::OnPath;
    path_.push_back({index, linksOf(index), 0});
}

void CircleSearch::vGo(Step& step) {
    // Each circle is looked at as a whole; beyond these they are only counted.
    if (step.next == step.links.size() || circleCount_ > SchemaRun::maxFindingsPerCode) {
        states_[step.index] = State::Done;
        path_.pop_back();
        return;
    }
    const auto target = step.links[step.next++].target;
    if (states_[target] == State::New)
        vStep(target);
    else if (states_[target] == State::OnPath)
        vCircleAdd(target);
}

/// Whether a type is the one named in it, and not a list or a selection: those may have the type in them.
bool isSameAs(const ExpressDeclaration& type, const ExpressName& name) {
    const auto* const begin = type.name.text.data() + type.name.text.size();
    const auto* const end = name.word.text.data();
    return type.kind == Kind::Type && name.use == ExpressUse::Type && begin < end &&
           std::string_view(begin, static_cast<std::size_t>(end - begin)).find_first_not_of("= \t\r\n") ==
               std::string_view::npos;
}

std::vector<Link> CircleSearch::linksOf(std::size_t index) {
    const auto& declaration = *run_.declared[index].declaration;
    std::vector<Link> links;
    for (const auto& name : declaration.names) {
        const bool isLink = name.use == ExpressUse::Supertype || isSameAs(declaration, name);
        const auto* const target = isLink ? run_.pDeclared(name.word.text) : nullptr;
        if (target && target->declaration->kind == declaration.kind)
            links.push_back({&name.word, static_cast<std::size_t>(target - run_.declared.data())});
    }
    return links;
}

/// ", through \"B\", \"C\" and 3 more", of `count` names in all.
std::string sThrough(std::span<const std::string> listed, std::size_t count) {
    if (count == 0)
        return {};
    const auto more = count - listed.size();
    std::string text = ", through ";
    for (std::size_t index = 0; index < listed.size(); ++index) {
        const bool isLast = more == 0 && index + 1 == listed.size();
        text += (index == 0 ? "" : isLast ? " and " : ", ") + listed[index];
    }
    return more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

/// `first` is on the path, and what is last there leads to it.
void CircleSearch::vCircleAdd(std::size_t first) {
    ++circleCount_;
    const auto onPath = std::ranges::find(path_, first, &Step::index);
    const auto circle =
        std::span<const Step>(path_).subspan(static_cast<std::size_t>(onPath - path_.begin()));
    // The first in the text has the finding.
    const auto shift =
        static_cast<std::size_t>(std::ranges::min_element(circle, {}, &Step::index) - circle.begin());
    const auto stepAt = [&](std::size_t index) -> const Step& {
        return circle[(shift + index) % circle.size()];
    };
    const auto nameOf = [this](const Step& step) {
        return sNamed(run_.declared[step.index].declaration->name.text);
    };
    const auto wordOf = [](const Step& step) { return *step.links[step.next - 1].word; };
    const auto& top = stepAt(0);
    const bool isEntity = run_.declared[top.index].declaration->kind == Kind::Entity;
    std::vector<std::string> listed;
    for (std::size_t index = 1; index < std::min(circle.size(), SchemaRun::maxPlaces + 1); ++index)
        listed.push_back(nameOf(stepAt(index)));
    auto& finding = run_.add("E021", wordOf(top),
                             (isEntity ? "the entity " : "the type ") + nameOf(top) +
                                 (isEntity ? " is its own supertype" : " is defined by itself") +
                                 sThrough(listed, circle.size() - 1));
    finding.subject = run_.declared[top.index].declaration->name.text;
    for (std::size_t index = 1; index <= listed.size(); ++index)
        run_.vNoteAt(finding, wordOf(stepAt(index)),
                     listed[index - 1] + (isEntity ? " is a subtype of " : " is defined by ") +
                         nameOf(stepAt(index + 1)) + " here");
    if (isEntity)
        run_.boTake(finding, SchemaReport::Supertype);
}

} // namespace

void vCirclesCheck(SchemaRun& run) {
    CircleSearch(run).vSearch();
}

} // namespace kiv::kit
