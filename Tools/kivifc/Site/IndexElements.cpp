#include "kivifc/Site/IndexElements.h"

namespace kiv::kivifc::site {

void vLetterWrite(const std::string& letter, Html& html) {
    html << "<h2" << attribute("id", "letter-" + letter) << ">" << escaped(letter) << "</h2>\n";
}

std::string_view letterPart(std::string_view letter) {
    return letter == "0-9" ? "digits" : letter;
}

} // namespace kiv::kivifc::site
