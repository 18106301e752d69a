#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Positions/ExpressScanner.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// E024: statements in the bodies of functions and rules that are not ended, or end nothing.
namespace kiv::kit {

namespace {

/// A statement with others inside.
struct Block {
    std::string_view keyword;
    std::string_view end;
};

constexpr std::array<Block, 9> Blocks = {{{"IF", "END_IF"},
                                          {"CASE", "END_CASE"},
                                          {"REPEAT", "END_REPEAT"},
                                          {"ALIAS", "END_ALIAS"},
                                          {"LOCAL", "END_LOCAL"},
                                          {"BEGIN", "END"},
                                          {"FUNCTION", "END_FUNCTION"},
                                          {"PROCEDURE", "END_PROCEDURE"},
                                          {"CONSTANT", "END_CONSTANT"}}};

const Block* pBlock(std::string_view word, std::string_view Block::*part) {
    const auto found = std::ranges::find_if(
        Blocks, [&](const Block& block) { return isSameExpressWord(word, block.*part); });
    return found == Blocks.end() ? nullptr : &*found;
}

/// Words that are in no condition.
bool isStatementWord(std::string_view word) {
    constexpr std::array<std::string_view, 4> Words = {"ELSE", "ESCAPE", "RETURN", "SKIP"};
    return pBlock(word, &Block::keyword) || pBlock(word, &Block::end) ||
           std::ranges::any_of(Words, [&](std::string_view each) { return isSameExpressWord(word, each); });
}

class BodyCheck {
public:
    BodyCheck(SchemaRun& run, const ExpressDeclaration& declaration) : run_(run), declaration_(declaration) {}

    void vCheck();

private:
    struct Open {
        const Block* block;
        ExpressWord word;
        // Up to THEN.
        bool isInCondition;
        bool hasFinding = false;
    };

    void vTokenTake(const ExpressToken& token);
    void vConditionCheck(const ExpressToken& token);
    void vEndTake(const Block& block, const ExpressToken& token);
    void vUnendedAdd(const Open& open);
    void vAdd(const ExpressWord& word, const std::string& message) {
        run_.add("E024", word, message + " in " + sOwner(declaration_)).subject = declaration_.name.text;
    }
    std::size_t& countOf(const Block& block) {
        return counts_[static_cast<std::size_t>(&block - Blocks.data())];
    }

    SchemaRun& run_;
    const ExpressDeclaration& declaration_;
    std::vector<Open> open_;
    // Of the open ones, so that a wrong end needs no search.
    std::array<std::size_t, Blocks.size()> counts_{};
};

void BodyCheck::vCheck() {
    ExpressScanner scanner(declaration_.body, 0);
    bool isPart = false;
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        // What comes after a dot is the name of an attribute or an item.
        if (!isPart)
            vTokenTake(token);
        isPart = token.isSymbol('.') || token.isSymbol('\\');
    }
    for (const auto& open : open_)
        vUnendedAdd(open);
}

void BodyCheck::vTokenTake(const ExpressToken& token) {
    if (!open_.empty() && open_.back().isInCondition)
        vConditionCheck(token);
    if (token.kind != ExpressTokenKind::Word)
        return;
    if (const auto* const end = pBlock(token.text, &Block::end)) {
        vEndTake(*end, token);
    } else if (const auto* const block = pBlock(token.text, &Block::keyword)) {
        open_.push_back({block, {token.text}, block->keyword == "IF"});
        ++countOf(*block);
    }
}

/// A condition has neither statements nor what ends or makes them.
void BodyCheck::vConditionCheck(const ExpressToken& token) {
    auto& open = open_.back();
    const bool isWord = token.kind == ExpressTokenKind::Word;
    open.isInCondition = !isWord || !isSameExpressWord(token.text, "THEN");
    if (!open.isInCondition ||
        (!token.isSymbol(';') && token.text != ":=" && !(isWord && isStatementWord(token.text))))
        return;
    open.isInCondition = false;
    open.hasFinding = true;
    vAdd(open.word, "THEN of this IF is missing");
}

/// What is open inside of what ends here is not ended.
void BodyCheck::vEndTake(const Block& block, const ExpressToken& token) {
    if (countOf(block) == 0)
        return vAdd({token.text}, "this " + std::string(block.end) + " ends nothing");
    while (open_.back().block != &block) {
        vUnendedAdd(open_.back());
        --countOf(*open_.back().block);
        open_.pop_back();
    }
    --countOf(block);
    open_.pop_back();
}

void BodyCheck::vUnendedAdd(const Open& open) {
    if (!open.hasFinding)
        vAdd(open.word,
             std::string(open.block->end) + " of this " + std::string(open.block->keyword) + " is missing");
}

} // namespace

void vBodiesCheck(SchemaRun& run) {
    const auto places = run.findingPlaces();
    for (const auto& declared : run.declared) {
        const auto& declaration = *declared.declaration;
        if (declared.isLost() || declared.finding || declaration.body.empty() || declaration.end.text.empty())
            continue;
        // A keyword in it may be misspelt, or a comment open: that is the mistake then.
        const auto found = std::ranges::lower_bound(places, run.positionOf(declaration.keyword));
        if (found == places.end() || *found > run.positionOf(declaration.end))
            BodyCheck(run, declaration).vCheck();
    }
}

} // namespace kiv::kit
