#include "kiv/Kit/Documents/SetDocument.h"

#include "Kit/Documents/Reading.h"
#include "Kit/Documents/ThreadSink.h"
#include "Kit/Documents/ViewStream.h"
#include "Kit/Text/MeteredRoom.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Host/Xml/KivXml.h"
#include "kiv/Kit/Documents/TextFile.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <new>
#include <string_view>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::schema::Schema;
using ifc::def::xml::SetDef;
using WellFormed = XmlPositions::WellFormed;

constexpr std::string_view PropertySetTag = "PropertySetDef";
constexpr std::string_view QuantitySetTag = "QtoSetDef";

/// The tag without its prefix.
std::string_view localName(std::string_view tag) {
    return tag.substr(tag.find(':') + 1);
}

ReadFailure rootFailure(std::string_view tag, const XmlPositions* positions) {
    const auto* root = positions ? positions->pRoot() : nullptr;
    const auto position = root ? positions->positionOf(*root) : TextPosition{};
    const auto local = localName(tag);
    const auto text = "root element is \"" + std::string(tag) + "\", ";
    if (local == PropertySetTag || local == QuantitySetTag)
        return {FailureKind::PrefixedRoot, text + "and prefixes are not supported", position, {}};
    return {FailureKind::NotASet, text + R"(neither "PropertySetDef" nor "QtoSetDef")", position, {}};
}

void vSetRead(SetDocument& document, const xml::Element& root, ifc::def::BudgetMeter& meter) {
    const auto tag = root.getNodeNameView();
    if (tag == PropertySetTag)
        document.propertySet = std::make_unique<ifc::def::pset::PropertySetDef>(root, document.errors, meter);
    else if (tag == QuantitySetTag)
        document.quantitySet = std::make_unique<ifc::def::qto::QuantitySetDef>(root, document.errors, meter);
    else
        document.failure = rootFailure(tag, document.positions.get());
}

/// One reading: with a schema the set is checked too.
class Reader {
public:
    Reader(const Schema* schema, const ReadOptions& options) : schema_(schema), options_(options) {}

    /// `text` gives the text of the file.
    template <class Text>
    SetDocument read(std::string path, Text text) const {
        SetDocument document;
        document.path = std::move(path);
        try {
            ifc::def::BudgetMeter meter(options_.budget);
            vRead(document, text(meter), meter);
        } catch (const std::bad_alloc&) {
            document.failure = caughtFailure();
        } catch (const ifc::def::BudgetExceeded&) {
            document.failure = caughtFailure();
        }
        if (document.failure)
            vPartsForget(document);
        return document;
    }

private:
    void vRead(SetDocument& document, TextFile file, ifc::def::BudgetMeter& meter) const {
        document.text = std::move(file.text);
        if (!file.failure.empty())
            document.failure = {FailureKind::Unreadable, std::move(file.failure), {}, {}};
        else if (document.text.empty())
            document.failure = {FailureKind::Empty, "the file is empty", {}, {}};
        else
            vTextRead(document, meter);
    }

    void vTextRead(SetDocument& document, ifc::def::BudgetMeter& meter) const {
        ViewStream stream(document.text);
        xml::File file(nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None);
        const auto root = file.parse(stream, document.path, &meter);
        // Only now, as parsing has found out whether the text is within the budget.
        if (options_.withPositions)
            vPositionsFind(document, meter, root ? WellFormed::Yes : WellFormed::Unknown);
        if (!root) {
            const auto& error = *file.pError();
            document.failure = {FailureKind::NotXml, error.reason, {error.line, error.column}, {}};
            return;
        }
        ThreadSink sink([&](const assert::AssertInfo& info) {
            vRoomForOne(document.assertions, &meter);
            document.assertions.push_back(
                {document.assertionTexts.kept(info, meter), document.errors.getRecords().size()});
        });
        const assert::ScopedSink installed(sink);
        vSetRead(document, *root, meter);
        const auto* set = document.pSet();
        if (set && schema_)
            document.isRefused = !set->checkForErrors(*schema_, document.errors);
        sink.vCheck();
    }

    static void vPositionsFind(SetDocument& document, ifc::def::BudgetMeter& meter, WellFormed wellFormed) {
        std::string text;
        vRoomForText(text, document.text.size(), &meter);
        text = document.text;
        document.positions = std::make_shared<const XmlPositions>(std::move(text), wellFormed, &meter);
    }

    /// What a reading had found before it failed is not what the document says.
    static void vPartsForget(SetDocument& document) noexcept {
        document.propertySet.reset();
        document.quantitySet.reset();
        document.errors = {};
        document.assertions.clear();
        document.assertionTexts = {};
        document.isRefused = false;
    }

    const Schema* schema_;
    const ReadOptions& options_;
};

SetDocument pathRead(const std::string& path, const Schema* schema, const ReadOptions& options) {
    return Reader(schema, options).read(path, [&](ifc::def::BudgetMeter& meter) {
        return textFileRead(path, meter.getBudget().maxInput, &meter);
    });
}

SetDocument textRead(std::string&& text, std::string&& path, const Schema* schema,
                     const ReadOptions& options) {
    return Reader(schema, options).read(std::move(path), [&](ifc::def::BudgetMeter& meter) {
        return textTake(std::move(text), meter);
    });
}

template <class Stream>
SetDocument streamRead(Stream& stream, std::string&& path, const Schema* schema, const ReadOptions& options) {
    return Reader(schema, options).read(std::move(path), [&](ifc::def::BudgetMeter& meter) {
        return textFileRead(stream, meter.getBudget().maxInput, &meter);
    });
}

} // namespace

const SetDef* SetDocument::pSet() const {
    if (propertySet)
        return propertySet.get();
    return quantitySet.get();
}

std::unique_ptr<SetDef> SetDocument::takeSet() {
    if (propertySet)
        return std::move(propertySet);
    return std::move(quantitySet);
}

SetDocument setDocumentRead(const std::string& path, const ReadOptions& options) {
    return pathRead(path, nullptr, options);
}

SetDocument setDocumentCheck(const std::string& path, const Schema& schema, const ReadOptions& options) {
    return pathRead(path, &schema, options);
}

SetDocument setTextRead(std::string text, std::string path, const ReadOptions& options) {
    return textRead(std::move(text), std::move(path), nullptr, options);
}

SetDocument setTextCheck(std::string text, std::string path, const Schema& schema,
                         const ReadOptions& options) {
    return textRead(std::move(text), std::move(path), &schema, options);
}

SetDocument setStreamRead(std::istream& stream, std::string path, const ReadOptions& options) {
    return streamRead(stream, std::move(path), nullptr, options);
}

SetDocument setStreamCheck(std::istream& stream, std::string path, const Schema& schema,
                           const ReadOptions& options) {
    return streamRead(stream, std::move(path), &schema, options);
}

SetDocument setStreamRead(std::FILE* stream, std::string path, const ReadOptions& options) {
    return streamRead(stream, std::move(path), nullptr, options);
}

SetDocument setStreamCheck(std::FILE* stream, std::string path, const Schema& schema,
                           const ReadOptions& options) {
    return streamRead(stream, std::move(path), &schema, options);
}

} // namespace kiv::kit
