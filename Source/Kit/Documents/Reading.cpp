#include "Kit/Documents/Reading.h"

#include "Kit/Text/MeteredRoom.h"
#include "kiv/Base/Exception.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace kiv::kit {

TextFile textTake(std::string text, ifc::def::BudgetMeter& meter) {
    const auto maxSize = meter.getBudget().maxInput;
    if (text.size() > maxSize)
        throw ifc::def::BudgetExceeded(ifc::def::BudgetLimit::Input, maxSize);
    vMemoryTake(&meter, memoryOf(text));
    return {std::move(text), {}};
}

ReadFailure caughtFailure() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return {FailureKind::OutOfMemory, "not enough memory", {}, {}};
    } catch (const std::out_of_range& error) {
        return {FailureKind::LiteralOutOfRange,
                std::string("a literal of a WHERE rule is out of range: ") + error.what(),
                {},
                {}};
    } catch (const ifc::def::BudgetExceeded& exceeded) {
        return {FailureKind::OverBudget, exceeded.what(), {}, exceeded.getLimit()};
    } catch (const kiv::exception&) {
        // The text is in memory, so no stream can fail: what is left is a list that its end leaves open.
        return {FailureKind::ListLeftOpen, "the schema ends in the middle of a list of names", {}, {}};
    } catch (const std::exception& error) {
        return {FailureKind::Unreadable, error.what(), {}, {}};
    }
}

} // namespace kiv::kit
