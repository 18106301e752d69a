// What tests, and hosts of our own document model, use beyond what the library needs: views, lines, documents
// that are built, and writing.

#include "SecondHost/XmlTree.h"

#include <ostream>
#include <utility>

namespace kiv::xml {

namespace {

/// A reference in place of each character that a reader would change or take for markup.
std::string sEscaped(std::string_view text, std::string_view escaped) {
    std::string result;
    for (const char character : text) {
        if (escaped.find(character) == std::string_view::npos)
            result += character;
        else if (character == '&')
            result += "&amp;";
        else if (character == '<')
            result += "&lt;";
        else if (character == '>')
            result += "&gt;";
        else if (character == '"')
            result += "&quot;";
        else
            result += "&#" + std::to_string(character) + ";";
    }
    return result;
}

class Writer {
public:
    explicit Writer(std::ostream& stream) : stream_(stream) {}

    void vNode(const NodeRecord& node, WriteStyle style, std::size_t level) {
        if (node.kind == NodeKind::Element)
            vElement(node, style, level);
        else if (node.kind == NodeKind::Text)
            stream_ << sEscaped(node.value, "&<>\r");
        else if (node.kind == NodeKind::Comment)
            stream_ << "<!--" << node.value << "-->";
        else if (node.kind == NodeKind::ProcessingInstruction)
            stream_ << "<?" << node.name << (node.value.empty() ? "" : " ") << node.value << "?>";
    }

private:
    void vElement(const NodeRecord& element, WriteStyle style, std::size_t level) {
        stream_ << '<' << element.name;
        for (const auto& attribute : element.attributes)
            stream_ << ' ' << attribute->name << "=\"" << sEscaped(attribute->value, "&<>\"\t\n\r") << '"';
        if (element.children.empty()) {
            stream_ << "/>";
            return;
        }
        stream_ << '>';
        vChildren(element, hasText(element) ? WriteStyle::Compact : style, level);
        stream_ << "</" << element.name << '>';
    }
    void vChildren(const NodeRecord& element, WriteStyle style, std::size_t level) {
        for (const auto& child : element.children) {
            vLineStart(style, level + 1);
            vNode(*child, style, level + 1);
        }
        vLineStart(style, level);
    }
    void vLineStart(WriteStyle style, std::size_t level) {
        if (style == WriteStyle::Indented)
            stream_ << '\n' << std::string(4 * level, ' ');
    }
    static bool hasText(const NodeRecord& element) {
        for (const auto& child : element.children) {
            if (child->kind == NodeKind::Text)
                return true;
        }
        return false;
    }

    std::ostream& stream_;
};

void vDocumentWrite(const NodeRecord& document, std::ostream& stream, WriteStyle style) {
    if (document.children.empty())
        return;
    const auto* const lineEnd = style == WriteStyle::Indented ? "\n" : "";
    stream << R"(<?xml version="1.0" encoding="UTF-8"?>)" << lineEnd;
    Writer(stream).vNode(*document.children.front(), style, 0);
    stream << lineEnd;
}

} // namespace

std::string_view const_Node::getNodeNameView() const {
    return nodeName(*node_);
}

std::string_view const_Node::getNodeValueView() const {
    if (node_->kind == NodeKind::Text || node_->kind == NodeKind::Attribute)
        return node_->value;
    return {};
}

std::size_t const_Node::getLine() const {
    return node_->line;
}

void const_Node::vWrite(std::ostream& stream, WriteStyle style) const {
    if (node_->kind == NodeKind::Document)
        vDocumentWrite(*node_, stream, style);
    else
        Writer(stream).vNode(*node_, style, 0);
}

std::string_view const_Element::tagNameView() const {
    return node_->name;
}

std::string_view const_Attr::getValueView() const {
    return node_->value;
}

Document::Document() : records_(std::make_unique<DocumentRecords>()) {}
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;
Document::~Document() = default;

Node Document::getNode() {
    return Node(&records_->root);
}

std::optional<const_Element> Document::DocumentElementGet() const {
    if (records_->root.children.empty())
        return std::nullopt;
    return Element(records_->root.children.front().get());
}

void Document::vWrite(std::ostream& stream, WriteStyle style) const {
    vDocumentWrite(records_->root, stream, style);
}

File::File(errorhandler::ExceptionInterface*, VerboseLevel, ValidateLevel) {}
File::File(File&& other) noexcept = default;
File& File::operator=(File&& other) noexcept = default;
File::~File() = default;

std::optional<Element> File::parse(std::istream& stream, const std::string& name,
                                   errorhandler::ParseInterface*) {
    TreeFailure failure;
    auto document = pTreeRead(stream, failure);
    error_.reset();
    if (!document) {
        error_ = ParseError{name, failure.reason, failure.line, failure.line == 0 ? 0U : 1U};
        return std::nullopt;
    }
    documents_.push_back(std::move(document));
    return Element(documents_.back()->root.children.front().get());
}

const ParseError* File::pError() const {
    return error_ ? &*error_ : nullptr;
}

} // namespace kiv::xml
