/// @file
/// Fills `XmlPositions`: with libexpat, or without a parser where one has accepted the text already.
///
/// Private to the kit.
///
/// Ownership: refers to the data.
/// Threads:   one thread for each reader.
/// Errors:    a text that is not well-formed is read up to there, with `Data::error`. What the meter throws;
///            std::bad_alloc.
#pragma once

#include "Kit/Positions/WellFormedXml.h"
#include "Kit/Positions/XmlPositionsData.h"
#include "Kit/Positions/XmlTagScanner.h"
#include "Kit/Text/MeteredRoom.h"

#include <cstddef>
#include <exception>
#include <expat.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

/// One run of the parser over the text.
class XmlPositionsReader {
public:
    /// The meter may be null.
    XmlPositionsReader(XmlPositions::Data& data, WorkMeter* meter);

    void vRead();
    /// The same without a parser, of a text that one has accepted.
    void vWellFormedRead();

private:
    /// Does something from within the parser, through whose C frames no exception may pass.
    template <auto member, typename... Arguments>
    static void XMLCALL vCall(void* reader, Arguments... arguments) noexcept;

    void vElementStart(const XML_Char* name, const XML_Char** attributes);
    void vElementEnd(const XML_Char* name);
    void vCharacters(const XML_Char* characters, int size);
    void vComment(const XML_Char* comment);
    void vProcessingInstruction(const XML_Char* target, const XML_Char* instruction);

    void vPieceRead(const XmlPiece& found);
    void vTagRead(std::size_t nameSize);
    /// Text without references.
    void vTextRead(std::string_view text);
    void vCdataRead(std::string_view text);
    void vInstructionRead(std::string_view instruction);
    void vElementClose();
    void vCharactersTake(std::string_view piece);
    void vWrittenTake(std::string_view piece);
    void vWrittenEnd();
    std::string_view openText() const;
    void vCommentTake(std::string_view comment);

    bool boParse();
    void vParserMake();
    /// The place of the parser.
    void vPlaceTake();
    std::size_t getOffset() const { return offset_; }
    std::size_t getSize() const { return size_; }
    /// Whether the tag of that name is written at this place, and not in an entity.
    bool boTagWritten(std::string_view name) const;
    XmlElement& elementAdd(std::string_view name);
    void vAttributesAdd(XmlElement& element, const XML_Char** attributes, bool isWritten);
    void vWrittenAttributeAdd(const WrittenAttribute& written, std::string_view name, std::string_view value);
    void vDefaultAttributeAdd(const XmlElement& element, std::string_view name, std::string_view value);
    void vTextBegin(std::size_t offset);
    /// Ends the first text of the innermost element.
    void vTextEnd();
    /// Notes what comes before any text of the innermost element.
    void vTextHide(std::string_view by);
    void vLaterTextNote(std::string_view piece);
    void vFail(std::string message);
    void vStop();

    /// An element that is not yet closed.
    struct Open {
        XmlIndex element = NoXmlElement;
        XmlIndex lastChild = NoXmlElement;
    };

    /// A view of the value that lives as long as the text.
    std::string_view kept(std::string_view value, std::string_view written) {
        return data_.kept(value, written, meter_);
    }
    /// The place to end a reading that is no longer wanted.
    void vLook() {
        if (meter_)
            meter_->vLook();
    }
    /// Gives back what is needed for reading alone.
    void vEnd() noexcept { vMemoryGiveBack(meter_, memoryOf(text_) + open_.capacity() * sizeof(Open)); }

    XmlPositions::Data& data_;
    WorkMeter* meter_;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser_{nullptr, &XML_ParserFree};
    /// The piece that is looked at.
    std::size_t offset_ = 0;
    std::size_t size_ = 0;
    std::vector<Open> open_;
    /// The first text of the innermost element, while it may still grow.
    bool isTextOpen_ = false;
    std::size_t textOffset_ = 0;
    /// Whether it reads as it is written up to here; `text_` is empty then.
    bool isTextAsWritten_ = false;
    std::string text_;
    /// Ignores whose element is to come, with the parent in which it has to be.
    std::size_t pendingIgnores_ = 0;
    std::size_t defaultSize_ = 0;
    bool isStopped_ = false;
    std::exception_ptr exception_;
};

} // namespace kiv::kit
