-- What the sessions share. They tell facts, one a line, which the test program judges:
--     fact NAME VALUE VALUE...        with tabs after the name and between the values

FOLDER = os.getenv("HOSTS_FOLDER") -- of this run
SESSION = FOLDER .. "/session"
NAME = "RDL3/RDL5 VST"

function fact(...)
  local values = {}
  for _, value in ipairs({...}) do
    table.insert(values, tostring(value))
  end
  io.write("fact ", table.concat(values, "\t"), "\n")
  io.flush()
end

-- Waits until the condition holds. On a loaded machine everything is only later.
function wait_until(what, condition)
  for _ = 1, 3000 do
    if condition() then return end
    ARDOUR.LuaAPI.usleep(10000)
  end
  error("in vain: " .. what)
end

function start_engine()
  local backend = AudioEngine:set_backend("None (Dummy)", "", "")
  backend:set_device_name("Silence")
end

-- How many lines of the simulator's report are this one.
function reported(line)
  local count = 0
  local file = io.open(os.getenv("SIMULATOR_REPORT"))
  if file then
    for text in file:lines() do
      if text == line then count = count + 1 end
    end
    file:close()
  end
  return count
end

-- Closes the session after letting go of everything that a script could still hold of it.
function close()
  collectgarbage()
  collectgarbage()
  close_session()
  fact("ended when closed", reported("end 1"))
end
