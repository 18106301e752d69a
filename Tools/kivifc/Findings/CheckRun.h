/// @file
/// Reads documents, on several threads when asked, and finds what is wrong with each and between them.
///
///     CheckRequest request(schemaFile, {*schemaFile.schema});
///     request.documents = {{"Pset_Wall.xml", {"IFC4"}}};
///     auto run = checkRun(request, sources);
///
/// Ownership: the request refers to the schema; what comes of it are values.
/// Threads:   one check at a time; it makes its own threads.
/// Errors:    std::bad_alloc. A document that cannot be read is a finding.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Findings/SetCheckContext.h"
#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Findings/Selection.h"
#include "kivifc/Findings/SourceLines.h"

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc {

/// A document and the contexts whose sets it belongs to.
struct CheckedPath {
    std::string path;
    std::vector<std::string> contexts;
    /// Why it is not even opened; empty for what is read.
    std::string refusal = {};
};

struct CheckRequest {
    CheckRequest(const SchemaFile& schemaFile, kit::SetCheckContext checkContext) :
        schema(schemaFile), context(std::move(checkContext)) {}

    const SchemaFile& schema;
    kit::SetCheckContext context;
    /// In the order of their paths.
    std::vector<CheckedPath> documents;
    /// How standard input is called.
    std::string standardInputName;
    std::size_t threads = 1;
    Selection selection;
    /// Keeps the records for the library's report.
    bool keepsRecords = false;
    /// Keeps the texts of documents that can be mended, and of those that can be read only once.
    bool keepsTexts = false;
    /// Texts to check in place of what is read, by the path that is shown.
    std::map<std::string, std::string> texts;
    /// Called with the number of documents that are done.
    std::function<void(std::size_t)> onProgress;
};

/// A document as it was read.
struct CheckedText {
    std::string text;
    /// Whether its path is that of the file it was read from; standard input only has a name.
    bool isFile = true;
};

struct CheckedDocuments {
    /// Those that are chosen, in the order of paths, lines, columns and codes.
    std::vector<kit::Finding> findings;
    /// The paths as they are shown, in order.
    std::vector<std::string> paths;
    std::size_t unreadable = 0;
    ifc::def::xml::XmlSetsErrors errors;
    /// Those that can be mended, by path.
    std::map<std::string, CheckedText> texts;
    /// Those that can be read only once, by path: of standard input and of pipes.
    std::map<std::string, std::string> streams;
    /// The paths of documents that are read and cannot be mended, as they are not UTF-8; known where texts
    /// are kept.
    std::set<std::string> unmendable;
};

/// `sources` gets the texts that cannot be read again.
CheckedDocuments checkRun(const CheckRequest& request, SourceLines& sources);

} // namespace kiv::kivifc
