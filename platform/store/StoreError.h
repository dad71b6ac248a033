// Why something could not be done with the store.
#pragma once

#include <string>

namespace corvane {

struct StoreError {
    enum class Kind {
        kNoLocation,  ///< there is no container
        kCannotOpen,  ///< the file cannot be opened, read or made
        kNotAStore,   ///< the file is there but is no such store; it is left untouched
        kReadOnly,    ///< persistent history, a read-only file or directory
        kBusy,        ///< another program held the lock longer than the busy timeout
        kNoSpace,     ///< the disk is full
        kInvalid,     ///< the request does not fit the model, the predicate's value types do not fit
        kFailed,      ///< anything else that SQLite reports
    };
    Kind kind = Kind::kFailed;
    std::string message;  ///< one line for people
};

}  // namespace corvane
