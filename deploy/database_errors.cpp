#include "deploy/database_errors.h"

#include <array>

#include "platform/error.h"

namespace rvl {
namespace {

constexpr const char* kSource = "Database";

struct Meaning {
    std::int32_t number;
    const char* description;
};

constexpr std::array kMeanings{
    Meaning{7, "Out of memory"},
    Meaning{kErrorUpdateWithoutEdit, "Update or CancelUpdate without AddNew or Edit."},
    Meaning{kErrorNoCurrentRecord, "No current record."},
    Meaning{kErrorDuplicateValue,
            "The changes you requested were not successful because they would create duplicate values in the "
            "index, primary key, or relationship."},
    Meaning{kErrorDiskFull, "Not enough space on disk."},
    Meaning{kErrorReadOnly, "Cannot update. Database or object is read-only."},
    Meaning{kErrorInputOutput, "Disk or network error."},
    Meaning{kErrorCannotLock, "Couldn't lock file."},
    Meaning{
        kErrorCannotOpen,
        "The database engine cannot open the file. It is already opened exclusively by another user, or you "
        "need permission to view its data."},
    Meaning{kErrorSelectExecuted, "Cannot execute a select query."},
    Meaning{kErrorRecordDeleted, "Record is deleted."},
    Meaning{kErrorInvalidOperation, "Invalid operation."},
    Meaning{kErrorNotSupported, "Operation is not supported for this type of object."},
    Meaning{kErrorItemNotFound, "Item not found in this collection."},
    Meaning{kErrorUnrecognizedFormat, "Unrecognized database format."},
    Meaning{kErrorObjectInvalid, "Object invalid or no longer set."},
    Meaning{kErrorDataConversion, "Data type conversion error."},
};

std::int32_t NumberOf(platform::SqliteFailure failure) {
    using Failure = platform::SqliteFailure;
    switch (failure) {
        case Failure::Locked:
            return kErrorCannotLock;
        case Failure::Forbidden:
            return kErrorCannotOpen;
        case Failure::Damaged:
            return kErrorUnrecognizedFormat;
        case Failure::DiskFull:
            return kErrorDiskFull;
        case Failure::InputOutput:
            return kErrorInputOutput;
        case Failure::Constraint:
            return kErrorDuplicateValue;
        case Failure::WrongType:
            return kErrorDataConversion;
        case Failure::OutOfMemory:
            return 7;
        case Failure::Statement:
            break;
    }
    return kErrorStatement;
}

}  // namespace

void RaiseDatabaseError(std::int32_t number) {
    for (const Meaning& meaning : kMeanings)
        if (meaning.number == number) throw Error(number, kSource, meaning.description);
    throw Error(number, kSource, "");
}

void RaiseDatabaseError(const platform::SqliteError& error) {
    if (error.Failure() == platform::SqliteFailure::Statement)
        throw Error(kErrorStatement, kSource, error.what());
    RaiseDatabaseError(NumberOf(error.Failure()));
}

}  // namespace rvl
