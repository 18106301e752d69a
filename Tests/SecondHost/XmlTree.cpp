#include "SecondHost/XmlTree.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <array>
#include <exception>
#include <istream>
#include <iterator>
#include <mutex>
#include <optional>
#include <utility>

namespace kiv::xml {

namespace {

const char* pChars(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

const xmlChar* pXmlChars(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

/// Calls `vTake` with each character of a text that is UTF-8, and with nothing for each byte that is not.
template <class Take>
void vCharacters(std::string_view text, const Take& vTake) {
    while (!text.empty()) {
        int size = static_cast<int>(std::min<std::size_t>(text.size(), 4));
        const int character = xmlGetUTF8Char(pXmlChars(std::string(text.substr(0, 4)).c_str()), &size);
        const bool isCharacter = character > 0 && IS_CHAR(character);
        const auto bytes = text.substr(0, character > 0 ? static_cast<std::size_t>(size) : 1);
        vTake(isCharacter ? bytes : std::string_view());
        text.remove_prefix(bytes.size());
    }
}

bool boName(const std::string& name) {
    return xmlValidateName(pXmlChars(name.c_str()), 0) == 0;
}

/// The whole stream; absent when it fails.
std::optional<std::string> textOf(std::istream& stream) {
    const auto exceptions = stream.exceptions();
    stream.exceptions(std::ios::goodbit);
    std::string text;
    std::array<char, 4096> block;
    if (!stream.good())
        return std::nullopt;
    while (stream.read(block.data(), block.size()) || stream.gcount() > 0)
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    const bool isRead = !stream.bad();
    try {
        stream.exceptions(exceptions);
    } catch (const std::ios::failure&) {
        // It is set to throw at its end; whether it failed is known already.
    }
    return isRead ? std::optional(std::move(text)) : std::nullopt;
}

/// Receives what libxml2 reads and builds the tree.
class Builder {
public:
    explicit Builder(xmlParserCtxt& context) : context_(context) { open_.push_back(&document_->root); }

    /// Runs what may throw; nothing may pass through the parser, which is written in C.
    template <class Action>
    void vDo(const Action& action) {
        if (failed_ || thrown_)
            return;
        try {
            action();
        } catch (...) {
            thrown_ = std::current_exception();
            xmlStopParser(&context_);
        }
    }

    void vRefuse(std::string reason) {
        failed_ = TreeFailure{std::move(reason), lineNow()};
        xmlStopParser(&context_);
    }

    void vElement(const char* name, const xmlChar** attributes) {
        if (open_.size() > TreeDepthMax)
            return vRefuse("elements are nested too deep");
        auto& element = append(*open_.back(), NodeKind::Element, name, {}, tagLine());
        for (; attributes && *attributes; attributes += 2)
            vAttributePut(element, pChars(attributes[0]), attributes[1] ? pChars(attributes[1]) : "");
        open_.push_back(&element);
    }
    void vElementEnd() { open_.pop_back(); }
    void vText(std::string_view text) {
        const auto feeds = static_cast<std::size_t>(std::ranges::count(text, '\n'));
        vTextAppend(*open_.back(), text, lineNow() - std::min(feeds, lineNow() - 1));
    }
    void vOther(NodeKind kind, const char* name, const char* value) {
        if (open_.size() > 1)
            append(*open_.back(), kind, name, value, lineNow());
    }

    std::unique_ptr<DocumentRecords> pDocument(TreeFailure& failure) {
        if (thrown_)
            std::rethrow_exception(thrown_);
        if (!failed_ && context_.wellFormed && !document_->root.children.empty())
            return std::move(document_);
        failure = failed_.value_or(TreeFailure{"not well-formed", lineNow()});
        return nullptr;
    }

private:
    std::size_t lineNow() const {
        const int line = xmlSAX2GetLineNumber(&context_);
        return line > 0 ? static_cast<std::size_t>(line) : 1;
    }
    /// The parser is at the end of the tag by now. No "<" can be inside a tag.
    std::size_t tagLine() const {
        auto line = lineNow();
        for (const auto* at = context_.input->cur; at > context_.input->base && *at != '<'; --at)
            line -= *at == '\n' && line > 1 ? 1 : 0;
        return line;
    }

    xmlParserCtxt& context_;
    std::unique_ptr<DocumentRecords> document_ = std::make_unique<DocumentRecords>();
    std::vector<NodeRecord*> open_;
    std::optional<TreeFailure> failed_;
    std::exception_ptr thrown_;
};

Builder& builderOf(void* context) {
    return *static_cast<Builder*>(context);
}

void vCharactersRead(void* context, const xmlChar* text, int size) {
    auto& builder = builderOf(context);
    builder.vDo([&] { builder.vText({pChars(text), static_cast<std::size_t>(size)}); });
}

void vEntityRefuse(void* context) {
    auto& builder = builderOf(context);
    builder.vDo([&] { builder.vRefuse("the document type declares or refers to an entity"); });
}

/// The callbacks of the first version of the interface, which leaves prefixes in the names.
xmlSAXHandler handler() {
    xmlSAXHandler sax{};
    sax.initialized = 1;
    sax.startElement = [](void* context, const xmlChar* name, const xmlChar** attributes) {
        auto& builder = builderOf(context);
        builder.vDo([&] { builder.vElement(pChars(name), attributes); });
    };
    sax.endElement = [](void* context, const xmlChar*) {
        auto& builder = builderOf(context);
        builder.vDo([&] { builder.vElementEnd(); });
    };
    sax.characters = vCharactersRead;
    sax.ignorableWhitespace = vCharactersRead;
    sax.cdataBlock = vCharactersRead;
    sax.comment = [](void* context, const xmlChar* text) {
        auto& builder = builderOf(context);
        builder.vDo([&] { builder.vOther(NodeKind::Comment, "", pChars(text)); });
    };
    sax.processingInstruction = [](void* context, const xmlChar* target, const xmlChar* data) {
        auto& builder = builderOf(context);
        builder.vDo([&] {
            builder.vOther(NodeKind::ProcessingInstruction, pChars(target), data ? pChars(data) : "");
        });
    };
    sax.internalSubset = [](void* context, const xmlChar*, const xmlChar* publicId, const xmlChar* systemId) {
        auto& builder = builderOf(context);
        if (publicId || systemId)
            builder.vDo([&] { builder.vRefuse("the document type names an external subset"); });
    };
    sax.entityDecl = [](void* context, const xmlChar*, int, const xmlChar*, const xmlChar*, xmlChar*) {
        vEntityRefuse(context);
    };
    sax.unparsedEntityDecl = [](void* context, const xmlChar*, const xmlChar*, const xmlChar*,
                                const xmlChar*) { vEntityRefuse(context); };
    sax.getParameterEntity = [](void* context, const xmlChar*) -> xmlEntity* {
        vEntityRefuse(context);
        return nullptr;
    };
    return sax;
}

/// What libxml2 would print.
void vDrop(void*, const char*, ...) {}

} // namespace

std::string_view nodeName(const NodeRecord& node) {
    switch (node.kind) {
    case NodeKind::Document:
        return "#document";
    case NodeKind::Text:
        return "#text";
    case NodeKind::Comment:
        return "#comment";
    case NodeKind::ProcessingInstruction:
        return "#processing-instruction";
    case NodeKind::Element:
    case NodeKind::Attribute:
        break;
    }
    return node.name;
}

NodeRecord& append(NodeRecord& parent, NodeKind kind, std::string_view name, std::string_view value,
                   std::size_t line) {
    auto node = std::make_unique<NodeRecord>();
    node->kind = kind;
    node->name = name;
    node->value = value;
    node->line = line;
    node->level = parent.level + 1;
    node->document = parent.document;
    auto& result = *node;
    const bool isSecondRoot = parent.kind == NodeKind::Document && !parent.children.empty();
    if (isSecondRoot || (kind == NodeKind::Element && result.level > TreeDepthMax)) {
        parent.document->refused.push_back(std::move(node));
        return result;
    }
    auto* const before = parent.children.empty() ? nullptr : parent.children.back().get();
    parent.children.push_back(std::move(node));
    if (before)
        before->next = &result;
    return result;
}

void vTextAppend(NodeRecord& parent, std::string_view text, std::size_t line) {
    if (text.empty())
        return;
    if (!parent.children.empty() && parent.children.back()->kind == NodeKind::Text)
        parent.children.back()->value.append(text);
    else
        append(parent, NodeKind::Text, "", text, line);
}

void vAttributePut(NodeRecord& element, std::string_view name, std::string_view value) {
    for (const auto& attribute : element.attributes) {
        if (attribute->name == name) {
            attribute->value = value;
            return;
        }
    }
    auto attribute = std::make_unique<NodeRecord>();
    attribute->kind = NodeKind::Attribute;
    attribute->name = name;
    attribute->value = value;
    attribute->line = element.line;
    attribute->document = element.document;
    element.attributes.push_back(std::move(attribute));
}

std::string sCarriableText(std::string_view text) {
    std::string carriable;
    vCharacters(text, [&](std::string_view character) {
        carriable.append(character.empty() ? std::string_view("\xEF\xBF\xBD") : character);
    });
    return carriable;
}

std::string sCarriableName(std::string_view name) {
    std::string carriable;
    vCharacters(name, [&](std::string_view character) {
        const bool fits = !character.empty() && boName(carriable + std::string(character));
        carriable.append(fits ? character : std::string_view("_"));
    });
    return carriable.empty() ? "_" : carriable;
}

std::unique_ptr<DocumentRecords> pTreeRead(std::istream& stream, TreeFailure& failure) {
    static std::once_flag isInitialised;
    std::call_once(isInitialised, xmlInitParser);
    // What it says of encodings would be printed, on whatever thread.
    xmlSetGenericErrorFunc(nullptr, vDrop);
    const auto text = textOf(stream);
    if (!text) {
        failure.reason = "the stream failed while it was read";
        return nullptr;
    }
    const auto vFree = [](xmlParserCtxt* context) { xmlFreeParserCtxt(context); };
    const std::unique_ptr<xmlParserCtxt, decltype(vFree)> context(
        xmlCreateMemoryParserCtxt(text->data(), static_cast<int>(text->size())), vFree);
    if (!context) {
        failure = {"no element found", 1};
        return nullptr;
    }
    xmlCtxtUseOptions(context.get(), XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOENT);
    *context->sax = handler();
    Builder builder(*context);
    context->userData = &builder;
    xmlParseDocument(context.get());
    return builder.pDocument(failure);
}

} // namespace kiv::xml
