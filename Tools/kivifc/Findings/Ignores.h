/// @file
/// Comments of a document that say what is not to be found there: `<!-- kivifc: ignore T001, N -->`.
///
///     DocumentIgnores ignores("walls.xml", *document.positions);
///     std::erase_if(findings, [&](const auto& finding) { return ignores.boHide(finding); });
///     ignores.vUnusedAdd(findings);
///
/// A comment is about the next element and everything inside it.
///
/// Ownership: values.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; a code that no rule has hides nothing, which is a finding.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Positions/XmlPositions.h"
#include "kivifc/Findings/Selection.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

class DocumentIgnores {
public:
    DocumentIgnores(std::string path, const kit::XmlPositions& positions);

    /// Whether a comment hides it; the comment then counts as used.
    bool boHide(const kit::Finding& finding);

    /// Adds a note for each code that hid nothing. One whose rule is not looked for is left in peace.
    void vUnusedAdd(std::vector<kit::Finding>& findings, const Selection& selection) const;

    bool isEmpty() const { return codes_.empty(); }

private:
    /// One code of a comment.
    struct Code {
        /// The code, or the beginning of codes.
        std::string code;
        std::string failure;
        kit::TextPosition comment;
        /// What it is about: from here to just before there. Both 0 when nothing follows the comment.
        kit::TextPosition begin;
        kit::TextPosition end;
        bool isRoot = false;
        bool isUsed = false;
    };

    void vCommentAdd(const kit::XmlIgnore& comment, const kit::XmlPositions& positions);
    kit::Finding unusedFinding(const Code& code) const;

    std::string path_;
    std::vector<Code> codes_;
};

} // namespace kiv::kivifc
