// SPDX-License-Identifier: Apache-2.0
#include "embedded/QorRepositoryFile.h"

const char* Qor_RepositoryStatusText(QorRepositoryStatus status) {
    switch (status) {
        case QorRepositoryStatus::Ok:
            return "no error";
        case QorRepositoryStatus::Missing:
            return "there is no such file";
        case QorRepositoryStatus::Exists:
            return "there is a file of that name already";
        case QorRepositoryStatus::NotARepository:
            return "is not a repository";
        case QorRepositoryStatus::NewerSchema:
            return "was written by a later version of this program";
        case QorRepositoryStatus::Damaged:
            return "is damaged";
        case QorRepositoryStatus::Locked:
            return "another process is writing";
        case QorRepositoryStatus::ChangedByOther:
            return "another process has changed it since it was opened";
        case QorRepositoryStatus::ReadOnly:
            return "can only be read";
        case QorRepositoryStatus::NoPermission:
            return "must not be opened";
        case QorRepositoryStatus::NoRoom:
            return "the disk is full";
        case QorRepositoryStatus::ReadFailed:
            return "reading failed";
        case QorRepositoryStatus::WriteFailed:
            return "writing failed";
        case QorRepositoryStatus::NoMemory:
            return "there is not enough memory";
        case QorRepositoryStatus::NotOpen:
            return "no repository is open";
        case QorRepositoryStatus::AlreadyOpen:
            return "a repository is in use already";
        case QorRepositoryStatus::UnitOpen:
            return "a unit of work is open";
        case QorRepositoryStatus::NoKey:
            return "the key cannot be used";
    }
    return "unknown error";
}
