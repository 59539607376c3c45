#pragma once
// Interfaces through which the host's format dialog sets font and colours of the windows.

#include "host/Host.h"

class IQFormatItemList {
  public:
    virtual HRESULT KVX_CALL Append(BSTR item) = 0;

  protected:
    ~IQFormatItemList() = default;
};

class IQFormatViewClient2 : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL GetName(BSTR* name) = 0;
    virtual HRESULT KVX_CALL Reserved2() = 0;
    virtual HRESULT KVX_CALL Reserved3() = 0;
    virtual HRESULT KVX_CALL GetItemNames(IQFormatItemList* items) = 0;
    virtual HRESULT KVX_CALL GetCurrentColours(BSTR* item, std::int32_t* foreground,
                                               std::int32_t* background) = 0;
    virtual HRESULT KVX_CALL GetFont(BSTR* face, std::int32_t* points) = 0;
    // Colours are indexes into the named-colour table.
    virtual HRESULT KVX_CALL SetColours(BSTR item, std::int32_t foreground,
                                        std::int32_t background) = 0;
    // E_INVALIDARG, and nothing changes, without a face or for a size outside 1 to 200.
    virtual HRESULT KVX_CALL SetFont(BSTR face, std::int32_t points) = 0;
    virtual HRESULT KVX_CALL SetFont2(BSTR face, std::int32_t points) = 0;
    virtual HRESULT KVX_CALL SetTextColours(std::int32_t foreground, std::int32_t background) = 0;
    virtual HRESULT KVX_CALL SetSelectedTextColours(std::int32_t foreground,
                                                    std::int32_t background) = 0;
    virtual HRESULT KVX_CALL Reserved12() = 0;
    virtual HRESULT KVX_CALL GetItemColours(BSTR item, std::int32_t* foreground,
                                            std::int32_t* background) = 0;

  protected:
    ~IQFormatViewClient2() = default;
};
