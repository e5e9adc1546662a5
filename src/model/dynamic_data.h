// What all dynamic nodes have in common.
#pragma once

#include <string>
#include <string_view>

#include "model/client_boundary.h"
#include "model/include/nodes.h"
#include "model/node_impl.h"
#include "model/node_values.h"
#include "model/sample_buffer.h"
#include "zentor/time_form.h"

namespace ZT_PLUGIN {

class VkjsonGroupImpl;

// The time of a sample of one document, as text and as what it is ordered by. Borrowed.
struct SampleTime {
    std::string_view text;
    zentor::Instant instant;
};

// The library's view of a dynamic node.
class IVkjsonDynamicData_I : public virtual ISharedObject_I {
public:
    // The node as it is written; borrowed from the node.
    virtual DynamicNodeView View() const = 0;
};

class VkjsonDynamicDataImpl : public virtual IVkjsonDynamicData_I, public VkjsonNodeImpl {
public:
    const std::string& SampleSetIdText() const { return sampleSetId_; }
    bool IsInitialized() const { return isInitialized_; }
    // The group that it is attached to; null when that is gone.
    void SetParent(const VkjsonGroupImpl* parent) { parent_ = parent; }

    // These throw ZT_PluginException; codes as the interfaces state.
    bool WriteAllSamples();
    void InitializeWith(std::string_view matchName, std::string_view displayName, std::string_view sampleSetId,
                        std::uint64_t sampleCount, std::uint32_t interpolation, bool hasExpectedFrequency,
                        std::string_view maxInterSampleDuration);

protected:
    explicit VkjsonDynamicDataImpl(std::uint64_t streamId);
    ~VkjsonDynamicDataImpl() override;

    DynamicNodeView CommonView(DynamicKind kind) const;
    std::uint64_t SampleCount() const;
    void SetExpectedSampleCount(std::uint64_t count);
    std::uint32_t Names(const char** matchName, const char** displayName, const char** sampleSetId) const;
    bool HasSamples() const { return samples_.Count() != 0; }
    // For what the widths of the samples depend on: ZT_INVALID_DYNAMIC_NODE once they are written.
    void CheckNotWritten() const;

    // Calls `add` with the time of a sample, given in one of three ways.
    template <class AddTo>
    void AtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond, AddTo&& add) {
        add(FormatTime(ticks, ticksPerSecond));
    }
    template <class AddTo>
    void AtTimeString(const char* timeString, AddTo&& add) {
        add(ReadTime(TextOrEmpty(timeString)));
    }

    // Code ZT_INVALID_DYNAMIC_NODE, ZT_STREAM_NOT_OPEN or ZT_TIME_MODE_INVALID when samples cannot be added. AtTicks
    // and AtTimeString see to that.
    void CheckAdding() const { RequireTimeForm(); }
    // ZT_SAMPLE_TIME when none can be added at this time.
    void CheckOrder(const SampleTime& time) const {
        if (HasSamples() && time.instant < lastTime_) throw ZT_PluginException(ZT_SAMPLE_TIME);
    }
    // Room for the text of the value of a sample whose time CheckOrder has passed; the sample then counts as added.
    char* AddText(const SampleTime& time, std::size_t size);

private:
    void CheckOpen() const;
    const zentor::TimeForm& RequireTimeForm() const;
    SampleTime FormatTime(std::int64_t ticks, std::uint32_t ticksPerSecond) const;
    void SetLatestTime(std::int64_t ticks, std::uint32_t ticksPerSecond) const;
    SampleTime ReadTime(std::string_view text) const;
    bool IsInDocument() const;

    const VkjsonGroupImpl* parent_ = nullptr;
    std::string sampleSetId_;
    std::uint64_t expectedCount_ = 0;
    std::uint64_t writtenCount_ = 0;
    Interpolation interpolation_ = Interpolation::kLinear;
    bool hasExpectedFrequency_ = false;
    std::string maxInterSampleDuration_;
    bool isInitialized_ = false;
    bool isUnusable_ = false;  // samples were lost
    bool isWritten_ = false;
    SampleBuffer samples_;
    zentor::Instant lastTime_;  // borrows from the latest time of the samples
};

// The square brackets of a text open before they close, and close. Readers find the end of all samples by counting
// them, in texts too.
bool HasBalancedBrackets(std::string_view text);

// The slots that the table of every dynamic kind begins with.
template <class Interface>
class DynamicDataSlots : public Interface, public VkjsonDynamicDataImpl {
public:
    void Reserved() noexcept override {}
    std::uint32_t WriteSamples(ZT_ErrorRecord* error) noexcept override {
        bool written = false;
        RunForClient(error, [&] { written = WriteAllSamples(); });
        return written ? 1 : 0;
    }
    void SetSampleCount(std::uint64_t count, ZT_ErrorRecord* error) noexcept override {
        RunForClient(error, [&] { SetExpectedSampleCount(count); });
    }
    std::uint64_t GetSampleCount() noexcept override { return SampleCount(); }
    ISharedObject* GetSharedObject() noexcept override { return this; }
    void DeletingDestructor(std::uint32_t flags) noexcept override { SharedObjectImpl::DeletingDestructor(flags); }
    std::uint32_t GetNames(const char** matchName, const char** displayName,
                           const char** sampleSetId) noexcept override {
        return Names(matchName, displayName, sampleSetId);
    }
    void Initialize(const char* matchName, const char* displayName, const char* sampleSetId, std::uint64_t sampleCount,
                    std::uint32_t interpolation, std::uint8_t hasExpectedFrequency, const char* maxInterSampleDuration,
                    ZT_ErrorRecord* error) noexcept override {
        RunForClient(error, [&] {
            InitializeWith(TextOrEmpty(matchName), TextOrEmpty(displayName), TextOrEmpty(sampleSetId), sampleCount,
                           interpolation, hasExpectedFrequency != 0, TextOrEmpty(maxInterSampleDuration));
        });
    }

protected:
    explicit DynamicDataSlots(std::uint64_t streamId) : VkjsonDynamicDataImpl(streamId) {
        Publish(static_cast<ISharedObject*>(this));
        Publish(static_cast<Interface*>(this));
    }

    // Runs an adder for a client: 1, or 0 with the failure in `error`.
    template <class Body>
    static std::uint32_t Added(ZT_ErrorRecord* error, Body&& body) noexcept {
        ZT_ErrorRecord outcome{};
        RunForClient(&outcome, body);
        if (error != nullptr) *error = outcome;
        return outcome.code == ZT_OK ? 1 : 0;
    }
};

}  // namespace ZT_PLUGIN
