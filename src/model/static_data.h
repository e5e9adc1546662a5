// Static data nodes.
#pragma once

#include <string>

#include "model/include/nodes.h"
#include "model/node_impl.h"
#include "model/node_values.h"

namespace ZT_PLUGIN {

// The library's view of a static node.
class IVkjsonStaticData_I : public virtual ISharedObject_I {
public:
    // The node as it is written; borrowed from the node.
    virtual StaticNodeView View() const = 0;
};

class VkjsonStaticDataImpl : public virtual IVkjsonStaticData_I, public VkjsonNodeImpl {
protected:
    using VkjsonNodeImpl::VkjsonNodeImpl;
    StaticNodeView NamedView(StaticKind kind) const;
};

// The slots that the table of every static kind begins with.
template <class Interface>
class StaticDataSlots : public Interface, public VkjsonStaticDataImpl {
public:
    void Reserved() noexcept override {}
    ISharedObject* GetSharedObject() noexcept override { return this; }
    void DeletingDestructor(std::uint32_t flags) noexcept override { SharedObjectImpl::DeletingDestructor(flags); }

protected:
    StaticDataSlots(std::uint64_t streamId, std::string_view matchName, std::string_view displayName)
        : VkjsonStaticDataImpl(streamId, matchName, displayName) {
        Publish(static_cast<ISharedObject*>(this));
        Publish(static_cast<Interface*>(this));
    }
};

// Both check a pattern or a range as the interfaces state: ZT_INCOMPLETE_PATTERN and ZT_RANGE_VALUE; ZT_RANGE_ORDER and
// ZT_RANGE_VALUE. `value` must lie in the range.
NumberPattern CheckedPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned);
MinMax CheckedRange(double minimum, double maximum, double value, zentor::NumberForm form);
// Code ZT_RANGE_VALUE for a number that cannot be written.
void CheckNumber(double value, zentor::NumberForm form);

class VkjsonStaticDataNumImpl final : public StaticDataSlots<IVkjsonStaticDataNum_v1> {
public:
    VkjsonStaticDataNumImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName,
                            double value);
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, std::uint8_t isSigned,
                    ZT_ErrorRecord* error) noexcept override;
    void SetRange(double legalMinimum, double legalMaximum, double value, ZT_ErrorRecord* error) noexcept override;
    StaticNodeView View() const override;

private:
    double value_;
    NumberPattern pattern_;
    MinMax legalRange_;
};

class VkjsonStaticDataStringImpl final : public StaticDataSlots<IVkjsonStaticDataString_v1> {
public:
    VkjsonStaticDataStringImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName,
                               std::string_view value);
    void SetStringProperties(std::uint64_t maxLength, std::uint64_t maxDigitsInLength, std::uint8_t isEventMarker,
                             ZT_ErrorRecord* error) noexcept override;
    StaticNodeView View() const override;

private:
    std::string value_;
    StringProperties properties_;
};

class VkjsonStaticDataBoolImpl final : public StaticDataSlots<IVkjsonStaticDataBool_v1> {
public:
    VkjsonStaticDataBoolImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName,
                             bool value);
    StaticNodeView View() const override;

private:
    bool value_;
};

class VkjsonStaticDataNumArrImpl final : public StaticDataSlots<IVkjsonStaticDataNumArr_v1> {
public:
    VkjsonStaticDataNumArrImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName);
    void SetValues(const double* values, std::uint64_t count, ZT_ErrorRecord* error) noexcept override;
    void SetDisplayNames(const char* const* names, std::uint64_t count, ZT_ErrorRecord* error) noexcept override;
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, std::uint8_t isSigned,
                    ZT_ErrorRecord* error) noexcept override;
    std::uint64_t GetArraySize() noexcept override { return array_.values.size(); }
    void SetRanges(const double* minima, const double* maxima, std::uint64_t count,
                   ZT_ErrorRecord* error) noexcept override;
    void SetIsPoint(std::uint8_t isPoint, ZT_ErrorRecord* error) noexcept override;
    StaticNodeView View() const override;

private:
    NumberArray array_;
};

}  // namespace ZT_PLUGIN
