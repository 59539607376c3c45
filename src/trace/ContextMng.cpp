#include "trace/ContextMng.h"

#include "host/CommandIds.h"
#include "platform/base/Resources.h"
#include "platform/base/Text.h"

int CContextMng::Load() {
    IQOSTraceService* const service = source_.Service();
    if (!service) return 0;
    Clear();
    std::int32_t count = 0;
    service->GetContextCount(&count);
    for (std::int32_t line = 0; line < count; ++line) {
        _tagSContextData data;
        if (Failed(service->GetContextData(line, &data))) return 0;
        contexts_.push_back(data);
    }
    return 1;
}

void CContextMng::Clear() {
    for (_tagSContextData& context : contexts_) SysFreeString(context.name);
    contexts_.clear();
}

void CContextMng::GetName(int line, CString& out) const {
    out = kvx::ToUtf8(At(line).name);
}

ContextKey CContextMng::GetKey(int line) const {
    const _tagSContextData& context = At(line);
    const bool numbered = context.type == kContextHandler || context.type == kContextTask;
    if (!numbered) return {kContextUnknown, 0};
    return {context.type, context.number};
}

CString CContextMng::GetShownName(int line) const {
    const _tagSContextData& context = At(line);
    if (context.type == kContextTask && context.number == 0) {
        return LoadString(kvx::ids::kStringIdle);
    }
    if (context.type == kContextHandler || context.type == kContextTask)
        return kvx::ToUtf8(context.name);
    return LoadString(kvx::ids::kStringUnknown);
}

ContextTexts CContextMng::GetTexts(int line) const {
    const _tagSContextData& context = At(line);
    ContextTexts texts;
    texts.name = GetShownName(line);
    if (context.type == kContextHandler) {
        texts.vector = kvx::FormatText(" %2d", context.number);
        texts.table = kvx::FormatText("%06X", context.tableAddress);
    } else if (context.type == kContextTask && context.number != 0) {
        texts.id = kvx::FormatText(" %3d", context.number);
    }
    return texts;
}
