#include "kivifc/Documents/SetDocument.h"

#include "kiv/Host/Xml/KivXml.h"
#include "kivifc/Documents/ParseFailure.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/SetPaths.h"
#include "kivifc/Documents/TextFile.h"

#include <fmt/format.h>
#include <new>
#include <sstream>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

using ifc::def::schema::Schema;
using ifc::def::xml::XmlSetErrors;

/// Keeps the reports with their place among the records of a document.
class DocumentSink final : public assert::Sink {
public:
    explicit DocumentSink(SetDocument& document) : document_(document) {}

    void vReport(const assert::AssertInfo& info) override {
        document_.assertions.push_back({{info.code, std::string(info.message), std::string(info.function),
                                         std::string(info.file), info.line},
                                        document_.errors.getRecords().size()});
    }

private:
    SetDocument& document_;
};

/// The tag without the prefix of its name space.
std::string_view localName(std::string_view tag) {
    return tag.substr(tag.find(':') + 1);
}

void vSetRead(SetDocument& document, const xml::Element& root, ifc::def::BudgetMeter& meter) {
    const auto tag = root.getNodeNameView();
    if (localName(tag) == "PropertySetDef")
        document.propertySet = std::make_unique<ifc::def::pset::PropertySetDef>(root, document.errors, meter);
    else if (localName(tag) == "QtoSetDef")
        document.quantitySet = std::make_unique<ifc::def::qto::QuantitySetDef>(root, document.errors, meter);
    else
        document.failure = {document.path,
                            fmt::format("root element is \"{}\", neither \"PropertySetDef\" nor "
                                        "\"QtoSetDef\"",
                                        tag)};
}

void vTextRead(SetDocument& document, std::string&& text, const Schema* schema) {
    std::istringstream stream(std::move(text));
    xml::File file(nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None);
    ifc::def::BudgetMeter meter(readingBudget());
    const auto root = file.parse(stream, document.path, &meter);
    if (!root) {
        document.failure = parseFailure(document.path, *file.pError());
        return;
    }
    DocumentSink sink(document);
    const assert::ScopedSink installed(sink);
    vSetRead(document, *root, meter);
    const auto* set = document.pSet();
    if (set && schema)
        document.isRefused = !set->checkForErrors(*schema, document.errors);
}

void vDocumentRead(SetDocument& document, const std::string& path, const Schema* schema) {
    auto file = path == StandardInputPath ? standardInputRead() : textFileRead(path);
    if (!file.failure.empty())
        document.failure = {document.path, file.failure};
    else if (file.text.empty())
        document.failure = {document.path, "the file is empty"};
    else
        vTextRead(document, std::move(file.text), schema);
}

SetDocument failedDocument(const std::string& shownPath, std::string reason) {
    SetDocument document;
    document.path = shownPath;
    document.failure = {shownPath, std::move(reason)};
    return document;
}

/// With a schema the set is checked too.
SetDocument documentRead(const std::string& path, const Schema* schema) {
    const auto shownPath = path == StandardInputPath ? std::string("<stdin>") : path;
    SetDocument document;
    document.path = shownPath;
    try {
        vDocumentRead(document, path, schema);
    } catch (const std::bad_alloc&) {
        document = failedDocument(shownPath, "not enough memory");
    } catch (const ifc::def::BudgetExceeded& exceeded) {
        document = failedDocument(shownPath, sLimitFailure(exceeded));
    }
    return document;
}

} // namespace

const ifc::def::xml::SetDef* SetDocument::pSet() const {
    if (propertySet)
        return propertySet.get();
    return quantitySet.get();
}

SetDocument setDocumentRead(const std::string& path) {
    return documentRead(path, nullptr);
}

SetDocument setDocumentCheck(const std::string& path, const Schema& schema) {
    return documentRead(path, &schema);
}

} // namespace kiv::kivifc
