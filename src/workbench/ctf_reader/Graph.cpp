#include "workbench/ctf_reader/Graph.h"

#include <algorithm>
#include <memory>
#include <sstream>

#include "platform/base/Text.h"

namespace kvx::ctf_reader {
namespace {

template <auto Release>
struct Releaser {
    template <class T>
    void operator()(const T* object) const {
        Release(object);
    }
};
using GraphPtr = std::unique_ptr<const bt_graph, Releaser<bt_graph_put_ref>>;
using ValuePtr = std::unique_ptr<const bt_value, Releaser<bt_value_put_ref>>;

// The library's messages carry addresses of its own objects, of no use to anybody else, and are
// broken into lines.
std::string Readable(const std::string& message) {
    std::istringstream words(message);
    std::string text;
    for (std::string word; words >> word;)
        if (word.find("-addr=") == std::string::npos)
            text.append(text.empty() ? "" : " ").append(word);
    text.erase(text.find_last_not_of(" ,:.") + 1);
    return text;
}

// The number behind a name in a message of the library; empty: it is not there.
std::string NumberIn(const std::string& message, const char* name) {
    const auto at = message.find(name);
    if (at == std::string::npos) return {};
    const auto begin = at + std::string_view(name).size();
    return message.substr(begin, message.find_first_not_of("-0123456789", begin) - begin);
}

// In words for whoever recorded the trace, where the library's are about itself.
std::string Plain(const std::string& message) {
    const auto before = NumberIn(message, "last-returned-ts=");
    if (before.empty()) return Readable(message);
    return "the times step back there, from " + before + " to " + NumberIn(message, " ts=") +
           " ns: the clock of the tracer began anew";
}

// What went wrong, the innermost cause first.
std::string TakeReason() {
    const bt_error* error = bt_current_thread_take_error();
    if (!error) return "the reader gives no reason";
    std::vector<std::string> causes;
    for (std::uint64_t i = 0; i < bt_error_get_cause_count(error); ++i)
        causes.push_back(
            Plain(bt_error_cause_get_message(bt_error_borrow_cause_by_index(error, i))));
    bt_error_release(error);
    return causes.empty() ? std::string("the reader gives no reason") : causes.front();
}

// The graph's end: hands the messages on.
class Sink {
  public:
    explicit Sink(IMessages& messages) : messages_(messages) {}

    static bt_graph_simple_sink_component_consume_func_status Consume(bt_message_iterator* iterator,
                                                                      void* self) {
        return static_cast<Sink*>(self)->ConsumeBatch(iterator);
    }

  private:
    bt_graph_simple_sink_component_consume_func_status ConsumeBatch(bt_message_iterator* iterator) {
        bt_message_array_const batch = nullptr;
        std::uint64_t count = 0;
        switch (bt_message_iterator_next(iterator, &batch, &count)) {
            case BT_MESSAGE_ITERATOR_NEXT_STATUS_OK:
                break;
            case BT_MESSAGE_ITERATOR_NEXT_STATUS_END:
                return BT_GRAPH_SIMPLE_SINK_COMPONENT_CONSUME_FUNC_STATUS_END;
            case BT_MESSAGE_ITERATOR_NEXT_STATUS_AGAIN:
                return BT_GRAPH_SIMPLE_SINK_COMPONENT_CONSUME_FUNC_STATUS_AGAIN;
            case BT_MESSAGE_ITERATOR_NEXT_STATUS_MEMORY_ERROR:
                return BT_GRAPH_SIMPLE_SINK_COMPONENT_CONSUME_FUNC_STATUS_MEMORY_ERROR;
            case BT_MESSAGE_ITERATOR_NEXT_STATUS_ERROR:
                return BT_GRAPH_SIMPLE_SINK_COMPONENT_CONSUME_FUNC_STATUS_ERROR;
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            Handle(batch[i]);
            bt_message_put_ref(batch[i]);
        }
        return BT_GRAPH_SIMPLE_SINK_COMPONENT_CONSUME_FUNC_STATUS_OK;
    }

    // No exception may pass through the library: one ends the program.
    void Handle(const bt_message* message) noexcept {
        std::uint64_t discarded = 0;
        switch (bt_message_get_type(message)) {
            case BT_MESSAGE_TYPE_EVENT:
                return messages_.OnEvent(bt_message_event_borrow_event_const(message),
                                         TimeOf(message));
            case BT_MESSAGE_TYPE_PACKET_BEGINNING:
                return messages_.OnPacket(bt_message_packet_beginning_borrow_packet_const(message));
            case BT_MESSAGE_TYPE_DISCARDED_EVENTS:
                if (bt_message_discarded_events_get_count(message, &discarded) !=
                    BT_PROPERTY_AVAILABILITY_AVAILABLE)
                    discarded = 1;
                return messages_.OnDiscarded(Discarded::Events, discarded);
            case BT_MESSAGE_TYPE_DISCARDED_PACKETS:
                if (bt_message_discarded_packets_get_count(message, &discarded) !=
                    BT_PROPERTY_AVAILABILITY_AVAILABLE)
                    discarded = 1;
                return messages_.OnDiscarded(Discarded::Packets, discarded);
            default:
                return;
        }
    }

    static std::optional<std::int64_t> TimeOf(const bt_message* message) {
        if (!bt_message_event_borrow_stream_class_default_clock_class_const(message))
            return std::nullopt;
        std::int64_t nanoseconds = 0;
        const auto* clock = bt_message_event_borrow_default_clock_snapshot_const(message);
        if (bt_clock_snapshot_get_ns_from_origin(clock, &nanoseconds) !=
            BT_CLOCK_SNAPSHOT_GET_NS_FROM_ORIGIN_STATUS_OK)
            return std::nullopt;
        return nanoseconds;
    }

    IMessages& messages_;
};

const bt_plugin* FindPlugin(const char* name) {
    const bt_plugin* plugin = nullptr;
    bt_plugin_find(name, BT_TRUE, BT_FALSE, BT_TRUE, BT_TRUE, BT_FALSE, &plugin);
    return plugin;
}

ValuePtr ParametersFor(const std::string& folder) {
    bt_value* map = bt_value_map_create();
    bt_value* inputs = nullptr;
    bt_value_map_insert_empty_array_entry(map, "inputs", &inputs);
    bt_value_array_append_string_element(inputs, folder.c_str());
    return ValuePtr(map);
}

// Sources -> muxer -> sink. False: the library's current error says why.
bool Connect(bt_graph* graph, const bt_component_source* source, const bt_component_filter* muxer) {
    for (std::uint64_t i = 0; i < bt_component_source_get_output_port_count(source); ++i) {
        const auto inputs = bt_component_filter_get_input_port_count(muxer);
        const auto status = bt_graph_connect_ports(
            graph, bt_component_source_borrow_output_port_by_index_const(source, i),
            bt_component_filter_borrow_input_port_by_index_const(muxer, inputs - 1), nullptr);
        if (status != BT_GRAPH_CONNECT_PORTS_STATUS_OK) return false;
    }
    return true;
}

bool Build(bt_graph* graph, const bt_plugin* ctf, const bt_plugin* utils,
           const std::vector<std::string>& folders, Sink& sink) {
    const bt_component_filter* muxer = nullptr;
    const auto* muxerClass = bt_plugin_borrow_filter_component_class_by_name_const(utils, "muxer");
    if (bt_graph_add_filter_component(graph, muxerClass, "muxer", nullptr, BT_LOGGING_LEVEL_NONE,
                                      &muxer) != BT_GRAPH_ADD_COMPONENT_STATUS_OK)
        return false;
    const auto* sourceClass = bt_plugin_borrow_source_component_class_by_name_const(ctf, "fs");
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const bt_component_source* source = nullptr;
        const auto parameters = ParametersFor(folders[i]);
        const auto name = FormatText("source%zu", i);
        if (bt_graph_add_source_component(graph, sourceClass, name.c_str(), parameters.get(),
                                          BT_LOGGING_LEVEL_NONE,
                                          &source) != BT_GRAPH_ADD_COMPONENT_STATUS_OK ||
            !Connect(graph, source, muxer))
            return false;
    }
    const bt_component_sink* end = nullptr;
    if (bt_graph_add_simple_sink_component(graph, "sink", nullptr, Sink::Consume, nullptr, &sink,
                                           &end) != BT_GRAPH_ADD_COMPONENT_STATUS_OK)
        return false;
    return bt_graph_connect_ports(graph,
                                  bt_component_filter_borrow_output_port_by_index_const(muxer, 0),
                                  bt_component_sink_borrow_input_port_by_index_const(end, 0),
                                  nullptr) == BT_GRAPH_CONNECT_PORTS_STATUS_OK;
}

}  // namespace

Plugins::Plugins() {
    bt_logging_set_global_level(BT_LOGGING_LEVEL_NONE);
    ctf_ = FindPlugin("ctf");
    utils_ = FindPlugin("utils");
}

Plugins::~Plugins() {
    bt_plugin_put_ref(ctf_);
    bt_plugin_put_ref(utils_);
}

std::string RunGraph(const Plugins& plugins, const std::vector<std::string>& folders,
                     IMessages& messages) {
    if (!plugins.Ctf() || !plugins.Utils())
        return "the babeltrace2 plug-ins \"ctf\" and \"utils\" are not installed";
    bt_graph* graph = bt_graph_create(0);
    const GraphPtr owner(graph);
    Sink sink(messages);
    if (!graph || !Build(graph, plugins.Ctf(), plugins.Utils(), folders, sink)) return TakeReason();
    for (;;) {
        const auto status = bt_graph_run_once(graph);
        if (status == BT_GRAPH_RUN_ONCE_STATUS_END) return {};
        if (status != BT_GRAPH_RUN_ONCE_STATUS_OK && status != BT_GRAPH_RUN_ONCE_STATUS_AGAIN)
            return TakeReason();
    }
}

}  // namespace kvx::ctf_reader
