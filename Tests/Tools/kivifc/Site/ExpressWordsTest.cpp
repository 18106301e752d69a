#include "kivifc/Site/ExpressWords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

/// Each piece after a letter for its kind.
std::vector<std::string> piecesOf(const std::string& text) {
    constexpr std::string_view Letters = "WSC-";
    std::vector<std::string> pieces;
    for (ExpressWords words(text); words.boNext();)
        pieces.push_back(Letters[static_cast<std::size_t>(words.getKind())] + std::string(words.getText()));
    return pieces;
}

struct Pieces {
    std::string text;
    std::vector<std::string> pieces;
};

void PrintTo(const Pieces& row, std::ostream* stream) {
    *stream << row.text;
}

class ExpressWordsPieces : public testing::TestWithParam<Pieces> {};

TEST_P(ExpressWordsPieces, AreOfTheirKinds) {
    EXPECT_EQ(piecesOf(GetParam().text), GetParam().pieces);
}

TEST_P(ExpressWordsPieces, JoinedAreTheText) {
    std::string joined;
    for (const auto& piece : piecesOf(GetParam().text))
        joined += piece.substr(1);
    EXPECT_EQ(joined, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Texts, ExpressWordsPieces,
                         testing::Values(Pieces{"", {}},
                                         Pieces{"SELF\\A_1.B", {"WSELF", "-\\", "WA_1", "-.", "WB"}},
                                         Pieces{"1.5E3*x", {"-1", "-.", "-5E3", "-*", "Wx"}},
                                         Pieces{"a(*b c*)d", {"Wa", "C(*b c*)", "Wd"}},
                                         Pieces{"a--b\nc", {"Wa", "C--b", "-\n", "Wc"}},
                                         Pieces{"a--b\r\nc", {"Wa", "C--b", "-\r\n", "Wc"}},
                                         Pieces{"'IFC4.A' x", {"S'IFC4.A'", "- ", "Wx"}},
                                         Pieces{"(* open", {"C(* open"}},
                                         Pieces{"'open\nx", {"S'open\n", "Wx"}}, Pieces{"<*>", {"-<*>"}}));

} // namespace

} // namespace kiv::kivifc::site::test
