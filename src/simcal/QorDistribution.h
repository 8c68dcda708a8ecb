// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/SvString.h"

class QorRandomGenerator;

namespace qor::simcal {
struct ReleaseInterval;
}

/// A probability distribution held as text, and the random generator that a simulation attaches to it.
///
///                 long form                   short form (inside calendar texts)
///   uniform       Uniform (3 ; 7)             U3;7      whole numbers, the lower bound smaller than the upper
///   exponential   Exponential (0.5)           E0.5      a plain decimal p with 0 < p <= 1, "0,5" as well as "0.5"
///
/// The keywords are texts of the current language, looked up at every call: a long form written in one language is no
/// distribution in another. Bounds are numbers of any length, compared by value ("007" is 7) and kept as written.
///
/// Operations return 1 on success and 0 on failure, when they leave their out parameters alone (pointers become null).
/// In and out text may be the same object.
class QOR_API QorDistribution {
public:
    QorDistribution() noexcept;
    /// The copy uses the same generator and never deletes it: it must not be asked for it after the original is gone.
    QorDistribution(const QorDistribution& other) noexcept;
    QorDistribution& operator=(const QorDistribution&) = delete;
    /// Deletes the generator if it was set here.
    ~QorDistribution();

    /// The long form as it was set; 0 when none was.
    int getDistributionString(SV::String& text) const noexcept;
    /// Stores a valid long form as it is. 0 when it is none, or a text was set before: that happens only once.
    int setDistributionString(const SV::String& text) noexcept;
    /// The same without a copy; empty when none was set.
    [[nodiscard]] const SV::String& getText() const noexcept { return _text; }
    /// What the user sees: the text as it was set, also in another language.
    int getDistributionStringInUIRep(SV::String& text) const noexcept;
    int getRandomGenerator(QorRandomGenerator*& generator) const noexcept;
    /// Takes ownership. 0 (and the caller keeps it) when it is null or a generator was set before.
    int setRandomGenerator(QorRandomGenerator* generator) noexcept;

    /// Whether the text is a valid long form.
    static int isDistribution(const SV::String& text) noexcept;
    static int isUniform(const SV::String& text) noexcept;
    static int isExponential(const SV::String& text) noexcept;

    /// Short to long. The order of uniform bounds is not looked at here, so the result can be no valid long form.
    static int getLongDistributionString(const SV::String& shortText, SV::String& longText) noexcept;
    static int getLongUniformDistributionString(const SV::String& shortText, SV::String& longText) noexcept;
    static int getLongExponentialDistributionString(const SV::String& shortText, SV::String& longText) noexcept;

    /// Long to short.
    static int getShortDistributionString(const SV::String& longText, SV::String& shortText) noexcept;
    static int getShortUniformDistributionString(const SV::String& longText, SV::String& shortText) noexcept;
    static int getShortExponentialDistributionString(const SV::String& longText, SV::String& shortText) noexcept;

    /// What the user sees is the long form itself, so nothing is lost on the way there and back; other texts give 0.
    static int convertLongDistributionStringInUIRep(const SV::String& longText, SV::String& shown) noexcept;
    static int convertLongUniformDistributionStringInUIRep(const SV::String& longText, SV::String& shown) noexcept;
    static int convertUIRepInLongDistributionString(const SV::String& shown, SV::String& longText) noexcept;
    static int convertUIRepInLongUniformDistributionString(const SV::String& shown, SV::String& longText) noexcept;

    /// The mean of a valid long form: (lower + upper) / 2, or 1 / p. 0 also when the bounds exceed a double.
    static int getExpectation(const SV::String& text, double& expectation) noexcept;
    static int getExpectationOfUniformDistribution(const SV::String& text, double& expectation) noexcept;
    static int getExpectationOfExponentialDistribution(const SV::String& text, double& expectation) noexcept;

private:
    friend class QorDayIntervalWithProperty;  // takes texts over that were checked, and makes exact copies
    friend struct qor::simcal::ReleaseInterval;

    /// For an empty distribution: makes it what a copy is. Throws when memory runs out, where the copy constructor
    /// would leave the copy without its text.
    void copyFrom(const QorDistribution& other);
    /// Makes the distribution empty again.
    void clear() noexcept;

    SV::String _text;
    QorRandomGenerator* _generator = nullptr;
    bool _ownsGenerator = false;
};
