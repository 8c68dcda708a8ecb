// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>
#include <string>

#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorEventListener.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"
#include "platform/SvString.h"

/// Which models a model refers to through the hierarchy attributes of its objects' classes (docs/hierarchies.md).
/// References name a model and its type; they lead to the newest version of it.
///
/// Answers are kept until an event says that they may have changed. Which attributes are hierarchy attributes is read
/// once, when the object is made: make one after a library was loaded, and another one for another library.
class QOR_API QorHierarchyManager {
public:
    /// Drops answers when models or references change.
    class QOR_API EventListener final : public QorEventListener {
    public:
        explicit EventListener(QorHierarchyManager& manager);
        ~EventListener() override;

    private:
        void onModelsChanged(const QorEvent& event);
        void onUpdatesSwitched(const QorEvent& event);
        void onReferencesChanged(const QorEvent& event);
        void onValueChanged(const QorEvent& event);

        QorHierarchyManager& _manager;
        bool _suspended = false;  ///< while the platform's automatic updates are; values set then are not looked at
    };

    QorHierarchyManager() noexcept;
    QorHierarchyManager(const QorHierarchyManager&) = delete;
    QorHierarchyManager& operator=(const QorHierarchyManager&) = delete;
    ~QorHierarchyManager();

    /// The process's own one, made when it is first asked for: after the library was loaded, please.
    static QorHierarchyManager& Instance() noexcept;

    /// Empty for a model without references, and when its references could not be fetched, which is remembered too. The
    /// set holds until an event or a call below drops it. References that lead nowhere are left out. The first question
    /// takes one fetch of the model's references.
    const ISortedSet<long>& getReferencedModels(long model) noexcept;
    [[nodiscard]] bool IsInCache(long model) const noexcept;
    void RemoveSourceModel(long model) noexcept;
    void Clear() noexcept;

    /// The tree of referenced models below the model as XML, children in ascending order. A model that stands above
    /// itself ends its branch; one that is referred to from several places stands at each, so that n models can give
    /// 2^n elements (QorReferenceIndex has a limit). NotAModelVersion leaves `text` as it is. Linear in the text's
    /// length.
    QorErrorCode GetHierarchyAsXML(long model, SV::String& text) noexcept;

private:
    void prepare() noexcept;
    void fetch(QorIdentifier model, ISortedSet<long>& models);
    void GetHierarchyAsXML(long model, std::string& text, ISortedSet<long>& path);

    std::map<QorIdentifier, ISortedSet<long>> _attributes;
    std::map<QorIdentifier, ISortedSet<long>> _cache;
    std::unique_ptr<EventListener> _listener;  ///< null only when memory ran out
};
