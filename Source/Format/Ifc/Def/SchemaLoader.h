/// @file
/// The process-wide cache of schemas by name. The library does not know where schema texts live; the host
/// says how one is made.
///
///     auto& loader = kiv::ifc::SchemaLoader::curr();
///     loader.newSchemaCallback = [](const std::string& name) {
///         std::ifstream text("schemas/" + name + ".exp");
///         return text ? kiv::ifc::def::SchemaPset::pStepStreamRead(text).release() : nullptr;
///     };
///     const auto* ifc4 = loader.pSchemaFromName("IFC4");
///
/// Ownership: owns the schemas it hands out until it is destroyed; there is no other way to let one go.
/// Threads:   `pSchemaFromName` from any number of threads, one schema being made at a time; who asks
///            meanwhile waits, for whatever name. `curr`, `vCurrFree` and setting the callback are for
///            start-up and shut-down, when nobody else asks.
/// Errors:    `kiv::exception` when a schema is to be made and there is no callback; std::system_error
///            (resource deadlock would occur) when a callback asks or frees the loader that is calling it;
///            what the callback throws.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace kiv::ifc {

class KIV_EXPORT SchemaLoader {
    /// Held by `pCurr` alone, which makes all loaders.
    struct Key {
        explicit Key() = default;
    };

public:
    /// Makes the schema of a name and hands over its ownership; null when it cannot.
    using NewSchemaCallback = std::function<def::SchemaPset*(const std::string&)>;

    explicit SchemaLoader(Key);
    ~SchemaLoader();
    SchemaLoader(const SchemaLoader&) = delete;
    SchemaLoader& operator=(const SchemaLoader&) = delete;

    /// The current loader; a new, empty one when there is none.
    static SchemaLoader& curr();

    /// Destroys the current loader, its callback first and then all its schemas. The next one is new and
    /// empty.
    static void vCurrFree();

    /// The schema of exactly this name, letter case included, made on the first request; null when the
    /// callback cannot make it, and then the next request asks it again.
    def::SchemaPset* pSchemaFromName(const std::string& name);

    /// What the callback makes for this name, past the cache and owned by the caller. With an empty callback
    /// it is `curr().pSchemaFromName(name)`: cached, owned by the loader and with the errors of that.
    static def::SchemaPset* pSchemaGet(NewSchemaCallback callback, const std::string& name);

    /// The host sets it before the first request. It must not ask this loader for a schema, nor wait for a
    /// thread that does: that one waits for it, and neither goes on. It may end the process.
    NewSchemaCallback newSchemaCallback;

private:
    class Lock;

    /// The current loader; the pointer may be null.
    static std::unique_ptr<SchemaLoader>& pCurrOrNull();
    /// The same after making sure that there is one.
    static std::unique_ptr<SchemaLoader>& pCurr();

    std::map<std::string, std::shared_ptr<def::SchemaPset>> schemas_;
    std::mutex mutex_;
    // The thread that holds the mutex; a plain mutex need not notice when it is locked again.
    std::atomic<std::thread::id> holder_;
};

} // namespace kiv::ifc
