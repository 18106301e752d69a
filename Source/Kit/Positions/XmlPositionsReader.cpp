#include "Kit/Positions/XmlPositionsReader.h"

#include "Kit/Positions/IgnoreText.h"
#include "Kit/Text/MeteredRoom.h"
#include "kiv/Host/Xml/KivXml.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace kiv::kit {

namespace {

/// Room for as many elements as a text of that size usually has. A text may be anything, so it is little.
std::size_t usualElements(std::size_t size) {
    constexpr std::size_t UsualBytes = 64;
    constexpr std::size_t maxElements = 256;
    return std::min(size / UsualBytes + 1, maxElements);
}

} // namespace

template <auto member, typename... Arguments>
void XMLCALL XmlPositionsReader::vCall(void* reader, Arguments... arguments) noexcept {
    auto& self = *static_cast<XmlPositionsReader*>(reader);
    if (self.isStopped_)
        return;
    self.vPlaceTake();
    try {
        self.vLook();
        (self.*member)(arguments...);
    } catch (...) {
        self.exception_ = std::current_exception();
        self.vStop();
    }
}

XmlPositionsReader::XmlPositionsReader(XmlPositions::Data& data, WorkMeter* meter) :
    data_(data), meter_(meter) {}

void XmlPositionsReader::vParserMake() {
    parser_.reset(XML_ParserCreate("UTF-8"));
    if (parser_ == nullptr)
        throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), vCall<&XmlPositionsReader::vElementStart>,
                          vCall<&XmlPositionsReader::vElementEnd>);
    XML_SetCharacterDataHandler(parser_.get(), vCall<&XmlPositionsReader::vCharacters>);
    XML_SetCommentHandler(parser_.get(), vCall<&XmlPositionsReader::vComment>);
    XML_SetProcessingInstructionHandler(parser_.get(), vCall<&XmlPositionsReader::vProcessingInstruction>);
}

void XmlPositionsReader::vRead() {
    vParserMake();
    const bool isRead = boParse();
    vPlaceTake();
    if (exception_)
        std::rethrow_exception(exception_);
    vEnd();
    if (isRead || data_.error)
        return;
    const XML_Error code = XML_GetErrorCode(parser_.get());
    if (code == XML_ERROR_NO_MEMORY)
        throw std::bad_alloc();
    vFail(XML_ErrorString(code));
}

bool XmlPositionsReader::boParse() {
    // The parser takes sizes as int.
    constexpr std::size_t largestPiece = std::size_t{1} << 30;
    for (std::string_view rest = data_.text;; rest.remove_prefix(largestPiece)) {
        const bool isLast = rest.size() <= largestPiece;
        const auto size = static_cast<int>(std::min(rest.size(), largestPiece));
        if (XML_Parse(parser_.get(), rest.data(), size, isLast) != XML_STATUS_OK)
            return false;
        if (isLast)
            return true;
    }
}

void XmlPositionsReader::vPlaceTake() {
    const auto index = std::max<XML_Index>(XML_GetCurrentByteIndex(parser_.get()), 0);
    offset_ = std::min(static_cast<std::size_t>(index), data_.text.size());
    size_ = static_cast<std::size_t>(std::max(XML_GetCurrentByteCount(parser_.get()), 0));
}

bool XmlPositionsReader::boTagWritten(std::string_view name) const {
    const auto tag = data_.text.substr(getOffset(), getSize());
    return tag.starts_with('<') && tag.substr(1).starts_with(name) && tag.size() > name.size() + 1;
}

void XmlPositionsReader::vFail(std::string message) {
    data_.error = XmlPositionError{std::move(message), data_.at(getOffset())};
}

void XmlPositionsReader::vStop() {
    isStopped_ = true;
    XML_StopParser(parser_.get(), XML_FALSE);
}

void XmlPositionsReader::vElementStart(const XML_Char* name, const XML_Char** attributes) {
    vTextEnd();
    if (open_.size() == xml::maxElementDepth ||
        data_.elements.size() == std::numeric_limits<XmlIndex>::max() - 1) {
        vFail("elements are nested deeper than " + std::to_string(xml::maxElementDepth) + " levels");
        vStop();
        return;
    }
    const bool isWritten = boTagWritten(name);
    XmlElement& element =
        elementAdd(kept(name, data_.text.substr(getOffset()).substr(1, std::string_view(name).size())));
    element.isWritten = isWritten;
    vAttributesAdd(element, attributes, isWritten);
    if (!isStopped_)
        vTextBegin(getOffset() + getSize());
}

/// The name lives as long as the text.
XmlElement& XmlPositionsReader::elementAdd(std::string_view name) {
    const auto index = static_cast<XmlIndex>(data_.elements.size());
    vRoomForOne(data_.elements, meter_);
    auto& element = data_.elements.emplace_back();
    element.name = name;
    element.descendantsEnd = index + 1;
    element.begin = offset_;
    element.tagEnd = offset_ + size_;
    if (!open_.empty()) {
        auto& parent = open_.back();
        element.parent = parent.element;
        if (parent.lastChild == NoXmlElement)
            data_.elements[parent.element].firstChild = index;
        else
            data_.elements[parent.lastChild].nextSibling = index;
        parent.lastChild = index;
    }
    for (; pendingIgnores_ != 0; --pendingIgnores_)
        data_.ignores[data_.ignores.size() - pendingIgnores_].element = index;
    vRoomForOne(open_, meter_);
    open_.push_back({index, NoXmlElement});
    return element;
}

/// `attributes` are names and values in turn, ended by null; those that the tag does not write come last.
void XmlPositionsReader::vAttributesAdd(XmlElement& element, const XML_Char** attributes, bool isWritten) {
    element.firstAttribute = static_cast<std::uint32_t>(data_.attributes.size());
    const int written = isWritten ? XML_GetSpecifiedAttributeCount(parser_.get()) : 0;
    XmlTagScanner scanner(data_.text, getOffset() + 1 + element.name.size());
    for (int i = 0; attributes[i] != nullptr && !isStopped_; i += 2) {
        if (i < written)
            vWrittenAttributeAdd(scanner.next(), attributes[i], attributes[i + 1]);
        else
            vDefaultAttributeAdd(element, attributes[i], attributes[i + 1]);
    }
    element.attributeCount = static_cast<std::uint32_t>(data_.attributes.size()) - element.firstAttribute;
}

void XmlPositionsReader::vWrittenAttributeAdd(const WrittenAttribute& written, std::string_view name,
                                              std::string_view value) {
    vRoomForOne(data_.attributes, meter_);
    auto& attribute = data_.attributes.emplace_back();
    attribute.name = kept(name, data_.text.substr(written.name, written.nameSize));
    attribute.value = kept(value, data_.text.substr(written.value, written.valueSize));
    attribute.begin = written.before;
    attribute.valueBegin = written.value;
    attribute.valueEnd = written.value + written.valueSize;
    attribute.isWritten = true;
}

void XmlPositionsReader::vDefaultAttributeAdd(const XmlElement& element, std::string_view name,
                                              std::string_view value) {
    defaultSize_ += sizeof(XmlAttribute) + name.size() + value.size();
    if (defaultSize_ > xml::maxDefaultAttributeSize) {
        vFail("default attribute values add more than " + std::to_string(xml::maxDefaultAttributeSize >> 20) +
              " MiB");
        vStop();
        return;
    }
    vRoomForOne(data_.attributes, meter_);
    auto& attribute = data_.attributes.emplace_back();
    attribute.name = kept(name, {});
    attribute.value = kept(value, {});
    attribute.valueBegin = element.isWritten ? element.begin + 1 : element.begin;
    attribute.valueEnd = element.isWritten ? attribute.valueBegin + element.name.size() : element.tagEnd;
}

void XmlPositionsReader::vElementEnd(const XML_Char*) {
    vElementClose();
}

void XmlPositionsReader::vElementClose() {
    vTextEnd();
    const auto index = open_.back().element;
    auto& element = data_.elements[index];
    element.end = getOffset() + getSize();
    element.descendantsEnd = static_cast<XmlIndex>(data_.elements.size());
    pendingIgnores_ = 0;
    open_.pop_back();
}

void XmlPositionsReader::vCharacters(const XML_Char* characters, int size) {
    vCharactersTake({characters, static_cast<std::size_t>(size)});
}

void XmlPositionsReader::vCharactersTake(std::string_view piece) {
    if (!isTextOpen_)
        return vLaterTextNote(piece);
    vRoomForMore(text_, piece.size(), meter_);
    text_.append(piece);
}

/// What reads as it is written need not be collected while that is so of all of the text.
void XmlPositionsReader::vWrittenTake(std::string_view piece) {
    if (!isTextOpen_ || !isTextAsWritten_)
        vCharactersTake(piece);
}

/// From here on the text reads in another way than it is written.
void XmlPositionsReader::vWrittenEnd() {
    if (!isTextOpen_ || !isTextAsWritten_)
        return;
    const auto written = openText();
    isTextAsWritten_ = false;
    vCharactersTake(written);
}

std::string_view XmlPositionsReader::openText() const {
    return isTextAsWritten_ ? data_.text.substr(textOffset_, getOffset() - textOffset_)
                            : std::string_view(text_);
}

void XmlPositionsReader::vComment(const XML_Char* comment) {
    vCommentTake(comment);
}

void XmlPositionsReader::vCommentTake(std::string_view comment) {
    vTextHide(comment);
    const auto ignored = ignoreTextOf(comment);
    if (!ignored)
        return;
    vRoomForOne(data_.ignores, meter_);
    auto& ignore = data_.ignores.emplace_back();
    ignore.codes = kept(ignored->codes, {});
    ignore.misspelt = kept(ignored->misspelt, {});
    ignore.begin = getOffset();
    ignore.end = getOffset() + getSize();
    ++pendingIgnores_;
}

void XmlPositionsReader::vProcessingInstruction(const XML_Char* target, const XML_Char* instruction) {
    std::string text(target);
    if (*instruction != '\0')
        text.append(" ").append(instruction);
    vTextHide(text);
}

void XmlPositionsReader::vWellFormedRead() {
    const auto elements = usualElements(data_.text.size());
    vRoomForAll(data_.elements, elements, meter_);
    // In usual documents every second element has an attribute, and few lie deeper.
    constexpr std::size_t UsualDepth = 16;
    vRoomForAll(data_.attributes, elements / 2 + 1, meter_);
    vRoomForAll(open_, UsualDepth, meter_);
    WellFormedXml xml(data_.text);
    for (auto piece = xml.next(); piece.kind != XmlPieceKind::End; piece = xml.next()) {
        offset_ = piece.offset;
        size_ = piece.size;
        vLook();
        vPieceRead(piece);
    }
    vEnd();
}

void XmlPositionsReader::vPieceRead(const XmlPiece& found) {
    const auto piece = data_.text.substr(found.offset, found.size);
    switch (found.kind) {
    case XmlPieceKind::StartTag:
    case XmlPieceKind::EmptyTag:
        vTagRead(found.nameSize);
        if (found.kind == XmlPieceKind::StartTag)
            return;
        // The end that an empty tag is too comes after it.
        offset_ += size_;
        size_ = 0;
        return vElementClose();
    case XmlPieceKind::EndTag:
        return vElementClose();
    case XmlPieceKind::Comment: {
        constexpr std::string_view Begin = "<!--";
        constexpr std::string_view End = "-->";
        return vCommentTake(
            sLineEndsNormalized(piece.substr(Begin.size(), piece.size() - Begin.size() - End.size())));
    }
    case XmlPieceKind::Instruction:
        return vInstructionRead(piece);
    default:
        break;
    }
    // Between elements outside of the root there are blanks only.
    if (open_.empty())
        return;
    if (found.kind == XmlPieceKind::Text)
        return vTextRead(piece);
    vWrittenEnd();
    if (found.kind == XmlPieceKind::Cdata)
        return vCdataRead(piece);
    vCharactersTake(sReferred(piece));
}

void XmlPositionsReader::vTextRead(std::string_view text) {
    if (!isTextOpen_ || text.find('\r') == std::string_view::npos)
        return vWrittenTake(text);
    vWrittenEnd();
    vCharactersTake(sLineEndsNormalized(text));
}

void XmlPositionsReader::vTagRead(std::size_t nameSize) {
    vTextEnd();
    const auto nameBegin = offset_ + 1;
    const auto tagEnd = offset_ + size_;
    XmlElement& element = elementAdd(data_.text.substr(nameBegin, nameSize));
    element.isWritten = true;
    element.firstAttribute = static_cast<std::uint32_t>(data_.attributes.size());
    XmlTagScanner scanner(data_.text, nameBegin + nameSize);
    while (scanner.hasNext(tagEnd)) {
        vLook();
        const auto written = scanner.next();
        const auto value = data_.text.substr(written.value, written.valueSize);
        vWrittenAttributeAdd(written, data_.text.substr(written.name, written.nameSize),
                             isValueAsWritten(value) ? value : std::string_view(sAttributeValue(value)));
    }
    element.attributeCount = static_cast<std::uint32_t>(data_.attributes.size()) - element.firstAttribute;
    vTextBegin(tagEnd);
}

/// Line by line, as a parser gives it.
void XmlPositionsReader::vCdataRead(std::string_view text) {
    constexpr std::size_t Begin = 9;
    constexpr std::size_t End = 3;
    const auto end = offset_ + text.size() - End;
    offset_ += Begin;
    while (offset_ != end) {
        const auto rest = data_.text.substr(offset_, end - offset_);
        const auto lineEnd = std::min(rest.find_first_of("\r\n"), rest.size());
        size_ = lineEnd;
        if (lineEnd != 0) {
            vCharactersTake(rest.substr(0, lineEnd));
        } else {
            size_ = rest.starts_with("\r\n") ? 2 : 1;
            vCharactersTake("\n");
        }
        offset_ += size_;
    }
}

void XmlPositionsReader::vInstructionRead(std::string_view instruction) {
    constexpr std::size_t Mark = 2;
    const auto text = instruction.substr(Mark, instruction.size() - 2 * Mark);
    const auto nameEnd = std::min(text.find_first_of(WhiteSpace), text.size());
    const auto name = text.substr(0, nameEnd);
    // The XML declaration is none.
    if (name == "xml")
        return;
    const auto begin = std::min(text.find_first_not_of(WhiteSpace, nameEnd), text.size());
    std::string shown(name);
    if (begin != text.size())
        shown.append(" ").append(sLineEndsNormalized(text.substr(begin)));
    vTextHide(shown);
}

void XmlPositionsReader::vTextBegin(std::size_t offset) {
    isTextOpen_ = true;
    // A parser gives the text as it reads.
    isTextAsWritten_ = !parser_;
    textOffset_ = offset;
    text_.clear();
}

void XmlPositionsReader::vTextHide(std::string_view by) {
    const bool isHidden = isTextOpen_ && openText().empty();
    vTextEnd();
    if (!isHidden)
        return;
    auto& element = data_.elements[open_.back().element];
    element.isTextHidden = true;
    element.text = kept(by, {});
    element.trimmedText = trimmed(element.text);
    element.textBegin = getOffset();
    element.textEnd = getOffset() + getSize();
}

void XmlPositionsReader::vTextEnd() {
    if (!isTextOpen_)
        return;
    isTextOpen_ = false;
    auto& element = data_.elements[open_.back().element];
    element.textBegin = textOffset_;
    // What an entity contains is where the entity is used.
    element.textEnd = std::max(getOffset(), textOffset_);
    const auto written = data_.text.substr(textOffset_, element.textEnd - textOffset_);
    element.text = isTextAsWritten_ ? written : kept(text_, written);
    element.trimmedText = trimmed(element.text);
}

/// Of a piece with several lines the first one counts that is not blank, as parsers give each line alone.
void XmlPositionsReader::vLaterTextNote(std::string_view piece) {
    const auto text = trimmed(piece);
    if (text.empty())
        return;
    auto& element = data_.elements[open_.back().element];
    if (element.hasLaterText())
        return;
    const auto before = static_cast<std::size_t>(text.data() - piece.data());
    element.laterText = getOffset() + std::min(before, getSize());
    const auto length = codePointsOfLine(trimmed(text.substr(0, text.find_first_of("\r\n"))));
    element.laterTextLength =
        static_cast<std::uint32_t>(std::min<std::size_t>(length, std::numeric_limits<std::uint32_t>::max()));
}

} // namespace kiv::kit
