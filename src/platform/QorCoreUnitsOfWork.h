// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// Writing as a whole: what is written between `begin` and `commit` is kept together or not at all, and costs one
/// transaction. Units do not nest.
class QOR_API QorCoreUnitsOfWork {
public:
    virtual ~QorCoreUnitsOfWork();
    /// Refused while a unit is open.
    virtual QorErrorCode begin() = 0;
    /// Keeps what was written; after a failure nothing of it is kept. Ends the unit either way.
    virtual QorErrorCode commit() = 0;
    /// Takes back what was written, and ends the unit.
    virtual void rollBack() noexcept = 0;
};

/// A unit of work of the installed host's repository, rolled back at its end unless committed. Where the host offers no
/// units, or one is open already, everything is written as it comes.
class QOR_API QorUnitOfWork {
public:
    QorUnitOfWork() noexcept;
    QorUnitOfWork(const QorUnitOfWork&) = delete;
    QorUnitOfWork& operator=(const QorUnitOfWork&) = delete;
    ~QorUnitOfWork();

    /// False when what is written cannot be taken back through this unit.
    [[nodiscard]] bool isOpen() const noexcept { return _units != nullptr; }
    /// Ok where there is no unit.
    QorErrorCode commit() noexcept;

private:
    QorCoreUnitsOfWork* _units;
};
