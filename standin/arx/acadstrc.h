// The status codes that the stand-in's calls return.
#pragma once

namespace Acad {
/// Callers compare by name; the one value that matters is that eOk is 0.
enum ErrorStatus
{
    eOk = 0,
    eNotApplicable,
    eInvalidInput,
    eOutOfMemory,
    eNullObjectPointer,
    eNullObjectId,
    eKeyNotFound,
    eDuplicateKey,
    eInvalidIndex,
    eInvalidAdsName,
    eWrongObjectType,
    eWrongDatabase,
    eUnknownHandle,
    eNotOpenForRead,
    eNotOpenForWrite,
    eNotThatKindOfClass,
    eWasErased,
    ePermanentlyErased,
    eWasOpenForRead,
    eWasOpenForWrite,
    eAtMaxReaders,
    eNotInDatabase,
    eNoDatabase,
    eNoDocument,
    eDocumentSwitchDisabled,
    eFileNotFound,
    eFileAccessErr,
    eFileSystemErr,
    eFileInternalErr,
    eInvalidFileExtension,
    eDwgNeedsRecovery,
    eLockViolation,
    eLockConflict,
    eInvalidContext,
    eOnLockedLayer
};
} // namespace Acad
