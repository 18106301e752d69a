/// @file
/// A document model of a host that has nothing but what the library needs of one: the library compiles, links
/// and works with it.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::xml {

class const_Attr;
class const_Element;
class const_NamedNodeMap;
class const_NodeList;
class Element;

struct NodeRecord;
struct ElementRecord;
struct DocumentRecords;

class const_Node {
public:
    std::string getNodeName() const;
    bool boNodeNameIs(std::string_view name) const;
    /// Of texts; the value of an attribute is asked of a `const_Attr`.
    std::string getNodeValue() const;
    std::optional<const_Node> FirstChildGet() const;
    std::optional<const_Node> NextSiblingGet() const;
    const_NodeList ChildNodesGet() const;
    std::optional<const_NamedNodeMap> AttributesGet() const;

    template <typename Value>
    static std::optional<Value> from_string(std::string_view text);

protected:
    friend class const_Attr;
    friend class const_Element;
    friend class const_NamedNodeMap;
    friend class const_NodeList;
    explicit const_Node(NodeRecord* node) : node_(node) {}

    NodeRecord* node_;
};

template <>
std::optional<bool> const_Node::from_string<bool>(std::string_view text);

class const_Element : public const_Node {
public:
    static std::optional<const_Element> toWrapper(const const_Node& node);
    std::string tagName() const;
    std::optional<const_Element> FirstElementChildGet() const;
    std::optional<const_Element> NextElementSiblingGet() const;
    std::optional<const_Attr> AttributeNodeGet(std::string_view name) const;

private:
    friend class Element;
    explicit const_Element(NodeRecord* node) : const_Node(node) {}
};

class const_Attr : public const_Node {
public:
    static std::optional<const_Attr> toWrapper(const const_Node& node);
    std::string getValue() const;

private:
    friend class const_Element;
    explicit const_Attr(NodeRecord* node) : const_Node(node) {}
};

class const_NodeList {
public:
    std::optional<const_Node> FirstItemGet() const;

private:
    friend class const_Node;
    explicit const_NodeList(NodeRecord* first) : first_(first) {}

    NodeRecord* first_;
};

class const_NamedNodeMap {
public:
    std::uint64_t LengthGet() const;
    const_Node ItemGet(std::uint64_t index) const;

private:
    friend class const_Node;
    explicit const_NamedNodeMap(const ElementRecord* element) : element_(element) {}

    const ElementRecord* element_;
};

class Node : public const_Node {
public:
    Element ElementNodeAppend(std::string_view tagName);
    bool boTextNodeAppend(std::string_view text);

protected:
    explicit Node(NodeRecord* node) : const_Node(node) {}
};

class Element : public Node {
public:
    operator const_Element() const;
    void vAttributeSet(std::string_view name, std::string_view value);

private:
    friend class File;
    friend class Node;
    explicit Element(NodeRecord* node) : Node(node) {}
};

namespace errorhandler {
class ExceptionInterface;
class ParseInterface;
} // namespace errorhandler

enum class VerboseLevel : int;
enum class ValidateLevel : int;

class File {
public:
    File(errorhandler::ExceptionInterface* errors, VerboseLevel verbose, ValidateLevel validate);
    ~File();

    std::optional<Element> parse(std::istream& stream, const std::string& name,
                                 errorhandler::ParseInterface* progress);

private:
    std::vector<std::unique_ptr<DocumentRecords>> documents_;
};

} // namespace kiv::xml
