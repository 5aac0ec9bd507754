#pragma once

#include <gtest/gtest.h>

#include "standin/afx/afx.h"

// The module of resources stands in the chain while the object lives.
class ExtensionInChain
{
public:
    ExtensionInChain() : m_module(::LoadLibraryW(CString(HALVORAN_TEST_EXTENSION)))
    {
        EXPECT_NE(m_module, nullptr);
        EXPECT_TRUE(AfxInitExtensionModule(m_state, m_module));
        new CDynLinkLibrary(m_state);
    }
    ~ExtensionInChain()
    {
        AfxTermExtensionModule(m_state, FALSE);
        ::FreeLibrary(m_module);
    }
    ExtensionInChain(const ExtensionInChain&) = delete;
    ExtensionInChain& operator=(const ExtensionInChain&) = delete;
    HMODULE module() const { return m_module; }

private:
    AFX_EXTENSION_MODULE m_state{};
    HMODULE m_module;
};
