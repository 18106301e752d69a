#include "Scaling.h"

#include "Base/Ascii.h"
#include "Reading.h"
#include "Require.h"

#include <algorithm>
#include <random>

namespace kiv::bench {

namespace {

constexpr std::string_view GuidAttribute = "ifdguid=\"";
constexpr std::size_t GuidDigits = 32;
constexpr std::string_view ClassBegin = "<ClassName>";
constexpr std::string_view ClassEnd = "</ClassName>";

bool isNameCharacter(char byte) {
    return ascii::isLetter(byte) || ascii::isDigit(byte) || byte == '_';
}

/// Where the line that begins with the word ends; the text must have one.
std::size_t lineEndOf(const std::string& text, const std::string& word) {
    const auto begin = text.find('\n' + word);
    vRequire(begin != std::string::npos, "a schema to be copied lacks a line with " + word);
    return text.find('\n', begin + 1) + 1;
}

void vDigitsReplace(std::string& text, std::size_t begin, std::mt19937_64& random) {
    for (std::size_t digit = 0; digit != GuidDigits; ++digit)
        text[begin + digit] = "0123456789abcdef"[random() % 16];
}

void vGuidsReplace(std::string& text, std::mt19937_64& random) {
    for (auto place = text.find(GuidAttribute); place != std::string::npos;
         place = text.find(GuidAttribute, place)) {
        place += GuidAttribute.size();
        if (text.find('"', place) == place + GuidDigits)
            vDigitsReplace(text, place, random);
    }
}

} // namespace

void NumberedText::vCopyAppend(std::string& target, char mark, std::size_t copy) const {
    if (copy == 0) {
        target += text_;
        return;
    }
    const auto number = std::string(1, mark).append(std::to_string(copy));
    std::size_t done = 0;
    for (const auto place : places_) {
        target.append(text_, done, place - done).append(number);
        done = place;
    }
    target.append(text_, done);
}

SchemaCopies::SchemaCopies(const std::string& text, char mark) : mark_(mark) {
    const auto schema = pSchemaRead(text);
    for (const auto* const object : schema->getObjects())
        upperNames_.emplace(object->getNameUpper());
    const auto begin = lineEndOf(text, "SCHEMA");
    const auto end = text.rfind("END_SCHEMA");
    vRequire(end != std::string::npos && begin < end, "a schema to be copied has no END_SCHEMA");
    header_ = text.substr(0, begin);
    statements_ = NumberedText(text.substr(begin, end - begin));
    vNamesMark(statements_, std::string_view(text).substr(begin, end - begin), 0, end - begin);
}

std::string SchemaCopies::text(std::size_t copies) const {
    auto text = header_;
    for (std::size_t copy = 0; copy != copies; ++copy)
        statements_.vCopyAppend(text, mark_, copy);
    return text + "END_SCHEMA;\n";
}

void SchemaCopies::vNamesMark(NumberedText& numbered, std::string_view text, std::size_t begin,
                              std::size_t end) const {
    for (auto place = begin; place < end;) {
        const auto nameBegin = place;
        while (place < end && isNameCharacter(text[place]))
            ++place;
        std::string name(text.substr(nameBegin, place - nameBegin));
        std::transform(name.begin(), name.end(), name.begin(), ascii::getUpper);
        if (upperNames_.contains(name))
            numbered.vPlaceAdd(place);
        if (place == nameBegin)
            ++place;
    }
}

SetCopies::SetCopies(const std::vector<std::string>& texts, const SchemaCopies& schema) :
    mark_(schema.getMark()) {
    for (const auto& text : texts) {
        const auto nameEnd = text.find("</Name>");
        auto place = text.find(ClassBegin);
        vRequire(nameEnd != std::string::npos && nameEnd < place, "a set to be copied has no name in front");
        const auto rest = text.substr(nameEnd);
        documents_.push_back({NumberedText(text.substr(0, nameEnd)), NumberedText(rest)});
        auto& document = documents_.back();
        document.named.vPlaceAdd(nameEnd);
        for (place = rest.find(ClassBegin); place != std::string::npos;
             place = rest.find(ClassBegin, place)) {
            place += ClassBegin.size();
            schema.vNamesMark(document.rest, rest, place, rest.find(ClassEnd, place));
        }
    }
}

std::vector<std::string> SetCopies::texts(std::size_t copies, std::size_t schemaCopies) const {
    std::mt19937_64 random(copies);
    std::vector<std::string> texts;
    texts.reserve(copies * documents_.size());
    for (std::size_t copy = 0; copy != copies; ++copy) {
        for (const auto& document : documents_) {
            auto& text = texts.emplace_back();
            document.named.vCopyAppend(text, mark_, copy);
            document.rest.vCopyAppend(text, mark_, copy % schemaCopies);
            if (copy != 0)
                vGuidsReplace(text, random);
        }
    }
    return texts;
}

} // namespace kiv::bench
