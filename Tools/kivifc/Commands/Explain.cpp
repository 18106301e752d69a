#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Findings/Selection.h"
#include "kivifc/Pictures/RuleText.h"

#include <memory>
#include <string>

// `kivifc explain`: what a rule finds, why, and how to mend it.
namespace kiv::kivifc {

namespace {

constexpr const char* ExplainFooter =
    "Without a code, all rules are listed; with the beginning of codes, such as T, those.\n"
    "\n"
    "Exit status: 0 found, 1 no rule has the code, 2 the job could not be done.";

class ExplainCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override {
        const Options options(app);
        options.text("CODE", code_, "The code of a rule, as in [T001]");
        options.vFooter(ExplainFooter);
    }

    void vRun(Console& console) override {
        if (code_.empty())
            return console.output.vWrite(sRuleList(kit::getRules()));
        std::string failure;
        const auto code = sCodeOf(code_, failure);
        if (!failure.empty()) {
            console.diagnostics.vNote("explain", failure);
            return console.diagnostics.vFinding();
        }
        if (const auto* rule = kit::pRuleFind(code))
            return console.output.vWrite(sRuleText(*rule));
        for (const auto& rule : kit::getRules()) {
            if (rule.code.starts_with(code))
                console.output.vWrite(sRuleList({&rule, 1}));
        }
    }

private:
    std::string code_;
};

} // namespace

std::unique_ptr<Command> pExplainCommand() {
    return std::make_unique<ExplainCommand>();
}

} // namespace kiv::kivifc
