#include "Kit/Text/FileKind.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kit {

namespace {

TEST(FileKind, IsSeenByTheBeginning) {
    struct Row {
        std::string_view text, kind;
    };
    const Row rows[] = {
        {"%PDF-1.7", "a PDF document"},
        {"%PDF", ""},
        {"PK\x03\x04", "a ZIP archive"},
        {"PK\x03", ""},
        {"ISO-10303-21;\nHEADER;", "an IFC model"},
        {"iso-10303-21;", "an IFC model"},
        {"<!doctype HTML>", "an HTML page"},
        {"<HTML>", "an HTML page"},
        {"<!DOCTYPE PropertySetDef>", "an XML document"},
        {"<", "an XML document"},
        {"SCHEMA IFC4;", "an EXPRESS schema"},
        {"schema ifc4;", "an EXPRESS schema"},
        {"{\"a\": 1}", "a JSON document"},
        {"\n\t <a/>", "an XML document"},
        {"\xEF\xBB\xBFSCHEMA A;", "an EXPRESS schema"},
        {"\xEF\xBB\xBF \n{", "a JSON document"},
        {" \xEF\xBB\xBF<a/>", ""}, // a mark is at the beginning or none
        {"(* a comment *) SCHEMA A;", ""},
        {"wall", ""},
        {"  \n", ""},
        {"\xEF\xBB\xBF", ""},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(fileKindOf(row.text), row.kind) << row.text;
}

} // namespace

} // namespace kiv::kit
