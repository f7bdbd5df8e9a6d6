#pragma once

#include "workbench/document/product/Result.h"
#include "workbench/document/product/tables/Database.h"

#include <new>

namespace qor::document::tables {

/// What \p error means for the person who named \p file.
[[nodiscard]] Failure explain(const DatabaseError& error, const std::string& file);

/// The room's door: runs \p work and turns what it throws into a Failure that names \p file.
template <typename Work>
auto guarded(const std::string& file, const Work& work) -> decltype(work()) {
    try {
        return work();
    } catch (const DatabaseError& error) {
        return explain(error, file);
    } catch (const std::bad_alloc&) {
        return Failure{FaultKind::Machine, file + ": not enough memory"};
    } catch (const std::exception& error) {
        return Failure{FaultKind::Internal, file + ": " + error.what()};
    }
}

} // namespace qor::document::tables
