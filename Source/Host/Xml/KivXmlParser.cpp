#include "Host/Xml/KivXmlParser.h"

#include "Base/Metered.h"
#include "Host/Xml/KivXmlLines.h"
#include "Host/Xml/KivXmlRecords.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <exception>
#include <expat.h>
#include <istream>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace kiv::xml {

namespace {

static_assert(std::is_same_v<XML_Char, char>, "libexpat hands out UTF-8");

/// Most documents fit into one block, and then the parser never has to note its place between two.
constexpr std::size_t firstBlockSize = std::size_t{31} * 1024;
constexpr std::size_t largestBlockSize = std::size_t{64} << 20;

/// Reads `size` bytes, or fewer at the end of the stream; absent when the stream fails.
std::optional<std::string_view> read(std::istream& stream, char* buffer, std::size_t size) {
    if (stream.fail())
        return std::nullopt;
    try {
        stream.read(buffer, static_cast<std::streamsize>(size));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) { // a stream that is set to throw says so; its state says the rest
    }
    if (stream.bad())
        return std::nullopt;
    return std::string_view(buffer, static_cast<std::size_t>(stream.gcount()));
}

/// UTF-16 shows in its first character, which is a byte order mark or ASCII.
bool isUtf16(std::string_view start) {
    return start.size() >= 2 && (start[0] == '\0' || start[1] == '\0' || start.substr(0, 2) == "\xFE\xFF" ||
                                 start.substr(0, 2) == "\xFF\xFE");
}

/// Hands on to a meter what a reading takes, and gives the memory back of which nothing is kept.
class Account final : public WorkMeter {
public:
    /// Null for no meter.
    explicit Account(WorkMeter* meter) : meter_(meter) {}
    ~Account() {
        if (meter_)
            meter_->vMemoryGiveBack(held_);
    }
    Account(const Account&) = delete;
    Account& operator=(const Account&) = delete;

    WorkMeter* pMeter() { return meter_ ? this : nullptr; }
    /// The memory taken up to now is kept.
    void vKeep() { held_ = 0; }

    void vTake(Unit unit, std::uint64_t amount) override {
        meter_->vTake(unit, amount);
        held_ += unit == Unit::HeldBytes ? amount : 0;
    }
    void vMemoryGiveBack(std::uint64_t bytes) noexcept override {
        meter_->vMemoryGiveBack(bytes);
        held_ -= bytes;
    }
    void vPieceBegin() override { meter_->vPieceBegin(); }
    void vLook() override { meter_->vLook(); }

private:
    WorkMeter* meter_;
    std::uint64_t held_ = 0;
};

/// The memory of a parser, each block of which is reported to a meter before it is allocated. The parser's
/// hooks do not say which parser calls them, so every call of the parser that may allocate is made within a
/// `Use`.
class ParserMemory {
public:
    /// Null for no meter.
    explicit ParserMemory(WorkMeter* meter) : meter_(meter) {}
    ParserMemory(const ParserMemory&) = delete;
    ParserMemory& operator=(const ParserMemory&) = delete;
    ~ParserMemory() = default;

    /// Null when there is not enough memory.
    XML_Parser pParserMake();

    /// Throws what the meter threw when the parser was refused memory, if it was.
    void vRefusalRethrow() const {
        if (refusal_)
            std::rethrow_exception(refusal_);
    }

    /// While it lives, parsers on this thread take their memory here.
    class Use {
    public:
        explicit Use(ParserMemory& memory) : former_(std::exchange(current_, &memory)) {}
        ~Use() { current_ = former_; }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        ParserMemory* former_;
    };

private:
    /// Lies before each block.
    struct alignas(std::max_align_t) Header {
        ParserMemory* memory;
        std::size_t size;
    };

    static void* pAllocate(std::size_t size) noexcept;
    static void* pReallocate(void* block, std::size_t size) noexcept;
    static void vFree(void* block) noexcept;
    static Header& getHeader(void* block) { return static_cast<Header*>(block)[-1]; }

    static thread_local ParserMemory* current_;

    WorkMeter* meter_;
    std::exception_ptr refusal_;
};

thread_local ParserMemory* ParserMemory::current_ = nullptr;

XML_Parser ParserMemory::pParserMake() {
    if (!meter_)
        return XML_ParserCreate(nullptr);
    const Use use(*this);
    const XML_Memory_Handling_Suite functions{pAllocate, pReallocate, vFree};
    return XML_ParserCreate_MM(nullptr, &functions, nullptr);
}

void* ParserMemory::pAllocate(std::size_t size) noexcept {
    auto& memory = *current_;
    const auto whole = sizeof(Header) + size;
    try {
        memory.meter_->vTake(WorkMeter::Unit::HeldBytes, whole);
    } catch (...) {
        memory.refusal_ = std::current_exception();
        return nullptr;
    }
    void* const place = ::operator new(whole, std::nothrow);
    if (place == nullptr) {
        memory.meter_->vMemoryGiveBack(whole);
        return nullptr;
    }
    return std::construct_at(static_cast<Header*>(place), Header{&memory, whole}) + 1;
}

void* ParserMemory::pReallocate(void* block, std::size_t size) noexcept {
    void* const other = pAllocate(size);
    if (block == nullptr || other == nullptr)
        return other;
    std::memcpy(other, block, std::min(getHeader(block).size - sizeof(Header), size));
    vFree(block);
    return other;
}

void ParserMemory::vFree(void* block) noexcept {
    if (block == nullptr)
        return;
    auto& header = getHeader(block);
    header.memory->meter_->vMemoryGiveBack(header.size);
    ::operator delete(&header);
}

/// One run of the parser over one stream.
class Reader {
public:
    Reader(std::istream& stream, std::size_t largestTokenSize, WorkMeter* meter);

    std::unique_ptr<DocumentRecords> pRead(ParseError& error);

private:
    /// Does something from within the parser, through whose C frames no exception may pass.
    template <typename Action>
    static void vGuard(void* reader, Action action) noexcept;
    /// A handler for the parser that calls the member.
    template <auto member, typename... Arguments>
    static void XMLCALL vCall(void* reader, Arguments... arguments) noexcept;
    static int XMLCALL onUnknownEncoding(void* reader, const XML_Char* name, XML_Encoding* encoding) noexcept;

    void vHandlersSet();
    void vElementStart(const XML_Char* name, const XML_Char** attributes);
    void vElementEnd(const XML_Char* name);
    void vCharacters(const XML_Char* text, int size);
    void vComment(const XML_Char* text);
    void vProcessingInstruction(const XML_Char* target, const XML_Char* data);
    void vDocumentTypeStart(const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId,
                            int hasInternalSubset);
    void vDocumentTypeToken(const XML_Char* token, int size);
    /// Whether the piece belongs to a quoted text, which the parser hands out with its quotes.
    bool boQuotedPiece(std::string_view piece);
    void vDocumentTypeEnd();
    void vAttributeDeclaration(const XML_Char* element, const XML_Char* name, const XML_Char* type,
                               const XML_Char* value, int isRequired);

    /// Notes a piece of markup, or a text, of which that many nodes and attributes are made.
    void vPieceTake(std::size_t objects);
    void vTextTake();
    void vAttributesAdd(ElementRecord& element, const XML_Char** attributes);
    void vDefaultsCount(const XML_Char** attributes);
    std::uint32_t getLine();
    ElementRecord& getParent() { return *open_[depth_]; }

    bool boParse();
    /// Shorter than `blockSize_` at the end only; absent when the stream fails.
    std::optional<std::string_view> readBlock();
    char* pBuffer();
    bool boBlockParse(std::size_t size, bool isLast);
    [[noreturn]] void vOutOfMemory() const;
    /// Takes note of a block of `size` bytes that was parsed. False, with the reason noted, when the token
    /// that it leaves open is too long.
    bool boBlockNote(std::size_t size);
    /// Notes the reason, unless there is one already, with the place at which the parser is.
    void vFail(std::string reason);
    void vRefuse(std::string reason);
    void vStop();

    std::istream& stream_;
    std::size_t largestTokenSize_;
    // Above the document, whose memory it gives back.
    Account account_;
    WorkMeter* meter_;
    ParserMemory parserMemory_;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser_;
    std::unique_ptr<DocumentRecords> records_;
    LineCounter lines_;
    std::size_t blockSize_ = firstBlockSize;
    /// The bytes of all blocks but the last.
    std::uint64_t readSize_ = 0;
    /// Of these, those of a token that is not complete yet.
    std::uint64_t openSize_ = 0;
    bool isUtf16_ = false;
    /// The document and the elements that are open, from the root element on.
    std::array<ElementRecord*, maxElementDepth + 1> open_{};
    std::size_t depth_ = 0;
    std::size_t defaultSize_ = 0;
    std::size_t declaredAttributeCount_ = 0;
    /// The quote that ends the quoted text which the last piece of the document type left open; absent
    /// outside of one.
    std::optional<char> openQuote_;
    /// Set once nothing more is taken from the parser, which may still have something to say.
    bool isStopped_ = false;
    std::exception_ptr exception_;
    std::optional<ParseError> error_;
};

template <typename Action>
void Reader::vGuard(void* reader, Action action) noexcept {
    auto& self = *static_cast<Reader*>(reader);
    if (self.isStopped_)
        return;
    try {
        action(self);
    } catch (...) {
        self.exception_ = std::current_exception();
        self.vStop();
    }
}

template <auto member, typename... Arguments>
void XMLCALL Reader::vCall(void* reader, Arguments... arguments) noexcept {
    vGuard(reader, [&](Reader& self) { (self.*member)(arguments...); });
}

int XMLCALL Reader::onUnknownEncoding(void* reader, const XML_Char* name, XML_Encoding*) noexcept {
    vGuard(reader,
           [&](Reader& self) { self.vFail("the encoding \"" + std::string(name) + "\" is not supported"); });
    return XML_STATUS_ERROR;
}

Reader::Reader(std::istream& stream, std::size_t largestTokenSize, WorkMeter* meter) :
    stream_(stream),
    largestTokenSize_(largestTokenSize),
    account_(meter),
    meter_(account_.pMeter()),
    parserMemory_(meter_),
    parser_(parserMemory_.pParserMake(), &XML_ParserFree),
    records_(std::make_unique<DocumentRecords>()),
    lines_(meter_) {
    if (parser_ == nullptr)
        vOutOfMemory();
    vMemoryTake(meter_, sizeof(DocumentRecords));
    records_->arena.vMeterSet(meter_);
    open_[0] = &records_->node;
    vHandlersSet();
}

void Reader::vHandlersSet() {
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, vCall<&Reader::vElementStart>, vCall<&Reader::vElementEnd>);
    XML_SetCharacterDataHandler(parser, vCall<&Reader::vCharacters>);
    XML_SetCommentHandler(parser, vCall<&Reader::vComment>);
    XML_SetProcessingInstructionHandler(parser, vCall<&Reader::vProcessingInstruction>);
    XML_SetDoctypeDeclHandler(parser, vCall<&Reader::vDocumentTypeStart>, vCall<&Reader::vDocumentTypeEnd>);
    XML_SetAttlistDeclHandler(parser, vCall<&Reader::vAttributeDeclaration>);
    XML_SetUnknownEncodingHandler(parser, onUnknownEncoding, this);
}

std::unique_ptr<DocumentRecords> Reader::pRead(ParseError& error) {
    const bool isRead = boParse();
    if (exception_)
        std::rethrow_exception(exception_);
    if (isRead && meter_) {
        parser_.reset();
        meter_->vMemoryGiveBack(lines_.getMemory());
        account_.vKeep();
    }
    records_->arena.vMeterSet(nullptr);
    if (isRead)
        return std::move(records_);
    error = std::move(*error_);
    return nullptr;
}

bool Reader::boParse() {
    std::optional<std::string_view> block = readBlock();
    isUtf16_ = block && isUtf16(*block);
    for (; block; block = readBlock()) {
        if (meter_) {
            meter_->vLook();
            meter_->vTake(WorkMeter::Unit::InputBytes, block->size());
        }
        if (!isUtf16_)
            lines_.vBlockAdd(*block);
        const bool isLast = block->size() < blockSize_;
        if (!boBlockParse(block->size(), isLast))
            break;
        if (isLast)
            return true;
        if (!boBlockNote(block->size()))
            return false;
    }
    const XML_Error code = XML_GetErrorCode(parser_.get());
    if (code == XML_ERROR_NO_MEMORY)
        vOutOfMemory();
    if (block)
        vFail(XML_ErrorString(code));
    else
        error_ = ParseError{{}, "the stream failed while it was read"};
    return false;
}

bool Reader::boBlockParse(std::size_t size, bool isLast) {
    const ParserMemory::Use use(parserMemory_);
    return XML_ParseBuffer(parser_.get(), static_cast<int>(size), isLast) == XML_STATUS_OK;
}

/// The parser could not allocate: either the budget refused, and that refusal is thrown again, or there is no
/// memory.
void Reader::vOutOfMemory() const {
    parserMemory_.vRefusalRethrow();
    throw std::bad_alloc();
}

void Reader::vPieceTake(std::size_t objects) {
    if (!meter_)
        return;
    meter_->vPieceBegin();
    meter_->vTake(WorkMeter::Unit::PieceBytes,
                  static_cast<std::uint64_t>(std::max(XML_GetCurrentByteCount(parser_.get()), 0)));
    meter_->vTake(WorkMeter::Unit::Objects, objects);
    meter_->vLook();
}

/// A text comes in pieces, which make one node.
void Reader::vTextTake() {
    const auto* const last = getParent().lastChild;
    if (last == nullptr || last->kind != NodeKind::Text)
        meter_->vTake(WorkMeter::Unit::Objects, 1);
    meter_->vLook();
}

std::optional<std::string_view> Reader::readBlock() {
    return read(stream_, pBuffer(), blockSize_);
}

/// Room for the next block, after what is open of the one before.
char* Reader::pBuffer() {
    const ParserMemory::Use use(parserMemory_);
    auto* const buffer = static_cast<char*>(XML_GetBuffer(parser_.get(), static_cast<int>(blockSize_)));
    if (buffer == nullptr)
        vOutOfMemory();
    return buffer;
}

/// A token that is cut by the end of a block is looked at again from its start with the next one. Blocks grow
/// with it, so that a very long token is not looked at over and over.
bool Reader::boBlockNote(std::size_t size) {
    readSize_ += size;
    const XML_Index parsed = std::max<XML_Index>(XML_GetCurrentByteIndex(parser_.get()), 0);
    openSize_ = readSize_ - static_cast<std::uint64_t>(parsed);
    if (meter_) {
        meter_->vPieceBegin();
        meter_->vTake(WorkMeter::Unit::PieceBytes, openSize_);
    }
    if (openSize_ > largestTokenSize_) {
        vFail("a piece of markup is longer than " + std::to_string(largestTokenSize_ >> 20) + " MiB");
        return false;
    }
    if (openSize_ > blockSize_ / 2)
        blockSize_ = std::min(2 * blockSize_, largestBlockSize);
    return true;
}

void Reader::vFail(std::string reason) {
    if (!error_)
        error_ = ParseError{{},
                            std::move(reason),
                            XML_GetCurrentLineNumber(parser_.get()),
                            XML_GetCurrentColumnNumber(parser_.get()) + 1};
}

void Reader::vRefuse(std::string reason) {
    vFail(std::move(reason));
    vStop();
}

void Reader::vStop() {
    isStopped_ = true;
    XML_StopParser(parser_.get(), XML_FALSE);
}

std::uint32_t Reader::getLine() {
    if (isUtf16_)
        return static_cast<std::uint32_t>(XML_GetCurrentLineNumber(parser_.get()));
    return lines_.getLine(static_cast<std::uint64_t>(XML_GetCurrentByteIndex(parser_.get())));
}

void Reader::vElementStart(const XML_Char* name, const XML_Char** attributes) {
    if (depth_ == maxElementDepth) {
        vRefuse("elements are nested deeper than " + std::to_string(maxElementDepth) + " levels");
        return;
    }
    vPieceTake(1);
    ElementRecord& element = records_->elementMake(getParent(), name, getLine());
    records_->vElementAppend(getParent(), element);
    open_[++depth_] = &element;
    if (*attributes != nullptr)
        vAttributesAdd(element, attributes);
}

/// `attributes` are names and values in turn, ended by null; those that the tag does not write come last.
void Reader::vAttributesAdd(ElementRecord& element, const XML_Char** attributes) {
    std::size_t count = 0;
    while (attributes[2 * count] != nullptr)
        ++count;
    const auto written = static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(parser_.get())) / 2;
    if (written != count)
        vDefaultsCount(attributes + 2 * written);
    if (isStopped_)
        return;
    if (meter_)
        meter_->vTake(WorkMeter::Unit::Objects, count);
    records_->vAttributesReserve(element, count);
    for (std::size_t i = 0; i != count; ++i)
        records_->attributeAppend(element, attributes[2 * i], attributes[2 * i + 1]);
}

void Reader::vDefaultsCount(const XML_Char** attributes) {
    for (; attributes[0] != nullptr; attributes += 2)
        defaultSize_ += sizeof(AttributeRecord) + std::string_view(attributes[0]).size() +
                        std::string_view(attributes[1]).size();
    if (defaultSize_ > maxDefaultAttributeSize)
        vRefuse("default attribute values add more than " + std::to_string(maxDefaultAttributeSize >> 20) +
                " MiB");
}

void Reader::vElementEnd(const XML_Char*) {
    --depth_;
}

void Reader::vCharacters(const XML_Char* text, int size) {
    if (meter_)
        vTextTake();
    records_->vTextAppend(getParent(), {text, static_cast<std::size_t>(size)}, [this] { return getLine(); });
}

void Reader::vComment(const XML_Char* text) {
    vPieceTake(depth_ != 0 ? 1 : 0);
    if (depth_ != 0)
        records_->vNodeAppend(getParent(), NodeKind::Comment, text, getLine());
}

void Reader::vProcessingInstruction(const XML_Char* target, const XML_Char* data) {
    vPieceTake(depth_ != 0 ? 1 : 0);
    if (depth_ == 0)
        return;
    std::string text(target);
    if (*data != '\0')
        text.append(" ").append(data);
    records_->vNodeAppend(getParent(), NodeKind::ProcessingInstruction, text, getLine());
}

void Reader::vDocumentTypeStart(const XML_Char*, const XML_Char* systemId, const XML_Char* publicId, int) {
    if (systemId != nullptr || publicId != nullptr)
        vRefuse("the document type names an external subset");
    XML_SetDefaultHandler(parser_.get(), vCall<&Reader::vDocumentTypeToken>);
}

/// The tokens of the document type pass here, because no other handler receives a reference to a parameter
/// entity, after which the parser ignores declarations and drops references to what they would have declared,
/// nor of a declaration of "lt" and its like. In an encoding that the parser converts, a long token comes in
/// several pieces, of which only the first shows what it is.
void Reader::vDocumentTypeToken(const XML_Char* token, int size) {
    const std::string_view text(token, static_cast<std::size_t>(size));
    if (boQuotedPiece(text))
        return;
    if (text == "<!ENTITY")
        vRefuse("the document type declares an entity");
    if (text.starts_with('%'))
        vRefuse("the document type refers to a parameter entity");
}

bool Reader::boQuotedPiece(std::string_view piece) {
    const bool isFirst = !openQuote_;
    if (isFirst && !piece.starts_with('"') && !piece.starts_with('\''))
        return false;
    if (isFirst)
        openQuote_ = piece.front();
    if (piece.find(*openQuote_, isFirst ? 1 : 0) != std::string_view::npos)
        openQuote_.reset();
    return true;
}

void Reader::vDocumentTypeEnd() {
    XML_SetDefaultHandlerExpand(parser_.get(), nullptr);
}

void Reader::vAttributeDeclaration(const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    if (++declaredAttributeCount_ > maxDeclaredAttributes)
        vRefuse("the document type declares more than " + std::to_string(maxDeclaredAttributes) +
                " attributes");
}

} // namespace

std::unique_ptr<DocumentRecords> pDocumentRead(std::istream& stream, ParseError& error,
                                               std::size_t largestTokenSize, WorkMeter* meter) {
    return Reader(stream, largestTokenSize, meter).pRead(error);
}

} // namespace kiv::xml
