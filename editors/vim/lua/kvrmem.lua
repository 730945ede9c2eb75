-- The language server of kvrmem in neovim: require('kvrmem').setup() starts it for the languages of memory files.

local M = {}

M.filetypes = {
    'kvr-coe',
    'kvr-hex',
    'kvr-logisim',
    'kvr-memheader',
    'kvr-mif',
    'kvr-readmem',
    'kvr-rif',
    'kvr-srec',
    'kvr-titxt',
}

--- The server of each command line.
local servers = {}

local function start(buffer, options)
    local config = {
        name = 'kvrmem',
        cmd = vim.list_extend({ options.path or 'kvrmem', 'lsp' }, options.arguments or {}),
        root_dir = vim.fn.getcwd(),
        on_attach = options.on_attach,
        capabilities = options.capabilities,
    }
    if vim.lsp.start then
        vim.api.nvim_buf_call(buffer, function() vim.lsp.start(config) end)
        return
    end
    -- for neovim before 0.8
    local key = table.concat(config.cmd, '\n')
    if not (servers[key] and vim.lsp.get_client_by_id(servers[key])) then
        servers[key] = vim.lsp.start_client(config)
    end
    if servers[key] then
        vim.lsp.buf_attach_client(buffer, servers[key])
    end
end

--- Starts the server when the first file in one of its languages is opened.
---
--- @param options table|nil path (of the tool), arguments (a list of options of "kvrmem lsp"), and on_attach and
---   capabilities, which are passed to vim.lsp.start_client()
function M.setup(options)
    local chosen = options or {}
    vim.api.nvim_create_autocmd('FileType', {
        group = vim.api.nvim_create_augroup('kvrmem_lsp', { clear = true }),
        pattern = M.filetypes,
        callback = function(event) start(event.buf, chosen) end,
    })
end

return M
