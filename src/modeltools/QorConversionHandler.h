// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "modeltools/QorClassConversion.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

/// Turns objects of one class into objects of others. What is carried over is written in the class's attribute
/// "__Conversion__" (docs/conversion.md). QorConversionPlan tells beforehand what would be lost, and converts as a
/// whole; this handler converts one object as far as it can.
class QOR_API QorConversionHandler {
public:
    /// Remembers the class and reads nothing yet. Any identifier will do; `Init` then refuses.
    explicit QorConversionHandler(long cls) noexcept;
    /// When memory runs out, the copy has no conversions and an internal error is shown; an assigned handler stays as
    /// it was.
    QorConversionHandler(const QorConversionHandler& other) noexcept;
    QorConversionHandler& operator=(const QorConversionHandler& other) noexcept;
    virtual ~QorConversionHandler();

    /// Reads the conversions from the text, or (null) from the class's attribute, in place of those read before. 0 when
    /// all went well, which it also did when the class has no such attribute. 106, after an internal error, for a class
    /// of neither part of the loaded library; 52 (ValueRefused) for a text with an error, which `GetErrorText` tells;
    /// conversions before the first error stay. O(length of the text).
    long Init(const char* text) noexcept;

    /// Makes an object of the target class with the same name, carries values and relations over to it, and deletes the
    /// old object. `newObject` is the new one, -1 after a failure, and -1 with Ok when the class has no attribute
    /// "__Conversion__": nothing is converted then. Reads the conversions anew each time; an error in them is shown and
    /// returned, and nothing is changed. A value that is refused is shown, and the conversion goes on. A relation that
    /// cannot be moved leaves the old object in the model, beside the new one, and its code is returned. References to
    /// the old object are not changed, and lead nowhere. Without a
    /// conversion into the target class no value is carried over but those of every object. Values raise no events.
    QorErrorCode Convert(long model, long object, long targetClass, long& newObject) noexcept;

    /// The last error of a definition or of a value.
    [[nodiscard]] const SV::String& GetErrorText() const noexcept { return _errorText; }
    /// Whether the text may stand in the class's attribute; null: the text that stands there. `errorText` tells why
    /// not; it is empty when all is well.
    [[nodiscard]] static bool IsCorrectConversionAttr(long cls, SV::String& errorText, const char* text) noexcept;
    /// The patterns of the part of the loaded library that the class belongs to; none for any other class.
    [[nodiscard]] std::vector<QorGrObjPattern> GetPatternList() const noexcept;

    // ---- What `Init` read ----

    [[nodiscard]] long cls() const noexcept { return _cls; }
    /// The class has no attribute "__Conversion__".
    [[nodiscard]] bool isWithoutConversion() const noexcept { return _isWithoutConversion; }
    /// In the order of the text.
    [[nodiscard]] const std::vector<QorClassConversion>& conversions() const noexcept { return _conversions; }
    /// The first conversion into the class; null when there is none.
    [[nodiscard]] const QorClassConversion* conversionInto(long targetClass) const noexcept;
    /// Whether the class belongs to the business-process part.
    [[nodiscard]] bool isBusinessProcess() const noexcept { return _isBusinessProcess; }
    /// The error of `Init` without its place, and the place in the text; line 0 when it has none.
    [[nodiscard]] const SV::String& GetErrorReason() const noexcept { return _errorReason; }
    [[nodiscard]] QorKexPosition GetErrorPosition() const noexcept { return _errorPosition; }
    /// "__Conversion__".
    [[nodiscard]] static const char* GetConversionAttrName() noexcept;

private:
    long read(const char* text);
    QorErrorCode convert(long model, long object, long targetClass, long& newObject);

    QorIdentifier _cls;
    SV::String _label;
    std::vector<QorClassConversion> _conversions;
    SV::String _errorText;
    SV::String _errorReason;
    QorKexPosition _errorPosition;
    bool _isBusinessProcess = false;
    bool _isWithoutConversion = false;
};
