-- Runs in Neovim, on the file that neovim.sh has opened. Each check prints its name, and the first check
-- that fails ends the editor with status 1.

local function fail(text)
    io.stderr:write('Failed: ' .. text .. '\n')
    vim.cmd('cquit 1')
end

local function check(condition, text)
    if not condition then
        fail(text)
    end
    io.stderr:write('ok: ' .. text .. '\n')
end

local function ask(method, line, column, more)
    local params = {
        textDocument = { uri = vim.uri_from_bufnr(0) },
        position = { line = line, character = column },
    }
    for name, value in pairs(more or {}) do
        params[name] = value
    end
    local answers = vim.lsp.buf_request_sync(0, method, params, 10000)
    for _, answer in pairs(answers or {}) do
        return answer.result, answer.error
    end
end

vim.wait(10000, function() return #vim.diagnostic.get(0) > 0 end, 20)
local diagnostics = vim.diagnostic.get(0)
check(#diagnostics == 1 and diagnostics[1].lnum == 4, 'a diagnostic in the line of the fault')

local hover = ask('textDocument/hover', 3, 12)
check(hover and hover.contents.value:find('float edge', 1, true), 'hover on a local')

local definition = ask('textDocument/definition', 3, 18)
check(definition and definition.uri:find('gain.h', 1, true) and definition.range.start.line == 0,
    'the definition in the included file')

local completion = ask('textDocument/completion', 4, 9)
local labels = {}
for _, item in ipairs(completion and completion.items or {}) do
    labels[item.label] = true
end
check(labels.edge and labels.Cs and labels.noise, 'completion of locals, predefined variables and built-ins')

local edit, refused = ask('textDocument/rename', 3, 12, { newName = 'border' })
check(edit and not refused, 'rename')
vim.lsp.util.apply_workspace_edit(edit, 'utf-16')
check(vim.fn.getline(4) == '    float border = gain(Kd);' and vim.fn.getline(5):find('border'),
    'both places have the new name')

vim.fn.setline(5, '    Ci = border * Cs;')
vim.wait(10000, function() return #vim.diagnostic.get(0) == 0 end, 20)
check(#vim.diagnostic.get(0) == 0, 'no diagnostic once the fault is fixed')

-- One server serves all open files, so it compiles the shader with unsaved changes of a header.
local shader = vim.api.nvim_get_current_buf()
vim.cmd('edit gain.h')
vim.cmd('set filetype=sl')
local header = vim.api.nvim_get_current_buf()
vim.fn.setline(3, '    return 2 * nothing;')
vim.wait(10000, function() return #vim.diagnostic.get(header) > 0 end, 20)
check(#vim.diagnostic.get(header) == 1, 'a diagnostic in a header that is not saved')
vim.fn.setline(1, 'float gains(float amount)')
vim.fn.setline(3, '    return 2 * amount;')
vim.wait(10000, function() return #vim.diagnostic.get(shader) > 0 end, 20)
check(#vim.diagnostic.get(shader) == 1 and #vim.diagnostic.get(header) == 0, 'and in its shader')
vim.cmd('qall!')
