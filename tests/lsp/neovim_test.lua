-- Acts like a user of the editor. The script that starts it compares the resulting files.

local folder = vim.env.FOLDER

local function fail(message)
    io.stdout:write(message .. "\n")
    vim.cmd("cquit 1")
end

local function expect(is_true, message, seen)
    if not is_true then
        fail(message .. ": " .. vim.inspect(seen))
    end
end

local function wait_for(what, is_there)
    expect(vim.wait(5000, is_there, 5), "this does not come: " .. what, vim.diagnostic.get())
end

--- Opens a file with the server and waits until the client is attached.
local function open(name, settings)
    vim.cmd("edit " .. folder .. "/" .. name)
    local id = vim.lsp.start_client({
        name = "kvrmem",
        cmd = { vim.env.KVRMEM, "lsp" },
        root_dir = folder,
        init_options = settings,
    })
    vim.lsp.buf_attach_client(0, id)
    wait_for("the client", function()
        return vim.lsp.buf_is_attached(0, id)
    end)
end

local function messages()
    local all = {}
    for _, each in ipairs(vim.diagnostic.get(0)) do
        table.insert(all, (each.lnum + 1) .. ":" .. (each.col + 1) .. " " .. each.message)
    end
    return all
end

local function request(method, line, character, more)
    local params = {
        textDocument = vim.lsp.util.make_text_document_params(0),
        position = { line = line, character = character },
        range = { start = { line = line, character = character }, ["end"] = { line = line, character = character } },
    }
    local answers = vim.lsp.buf_request_sync(0, method, vim.tbl_extend("force", params, more or {}), 5000)
    for _, answer in pairs(answers or {}) do
        expect(answer.err == nil, method, answer.err)
        return answer.result
    end
    fail("no answer to " .. method)
end

--- Chooses the code action with a title at the cursor, like a user.
local function choose(title, line, character)
    vim.api.nvim_win_set_cursor(0, { line + 1, character })
    vim.ui.select = function(items, _, done)
        for _, item in ipairs(items) do
            if item[2].title == title then
                return done(item, 1)
            end
        end
        fail("there is no action '" .. title .. "'")
    end
    local before = vim.api.nvim_buf_get_changedtick(0)
    vim.lsp.buf.code_action()
    wait_for(title, function()
        return vim.api.nvim_buf_get_changedtick(0) ~= before
    end)
end

open("boot.mif", { radix = "fixed:4.4" })
wait_for("the diagnostic", function()
    return #messages() == 1
end)
expect(messages()[1] == "5:7 no ';' after '1 : 20'", "the diagnostic", messages())

-- The text of the floating window.
vim.api.nvim_win_set_cursor(0, { 4, 5 })
vim.lsp.buf.hover()
local windows
wait_for("the window of the hover", function()
    windows = vim.api.nvim_list_wins()
    return #windows == 2
end)
local hover = table.concat(vim.api.nvim_buf_get_lines(vim.api.nvim_win_get_buf(windows[2]), 0, -1, true), "\n")
vim.api.nvim_win_close(windows[2], true)
expect(hover:find("address    0x0 (0)", 1, true), "the address of the hover", hover)
expect(hover:find("fixed:4.4  4.0625", 1, true), "the fraction of the hover", hover)
expect(hover:find("text       'A'", 1, true), "the character of the hover", hover)

local symbols = request("textDocument/documentSymbol", 0, 0)
expect(symbols[1].detail == "MIF, 3 words of 8 bits", "the first symbol", symbols)

choose("Fix: ';' put after the last value", 4, 0)
wait_for("a file without diagnostics", function()
    return #messages() == 0
end)
choose("Set all bits of the word at 0x2", 5, 4)
vim.cmd("write")

open("boot.hex", { width = 16 })
wait_for("the checksum", function()
    return #messages() == 1
end)
choose("Fix: checksum E9 is now E8", 0, 0)
vim.cmd("write")
vim.cmd("qall!")
