-- Functions for all sessions. They print facts, one a line, which the test program checks:
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

-- Waits until the condition holds, half a minute at most.
function wait_until(what, condition)
  for _ = 1, 3000 do
    if condition() then return end
    ARDOUR.LuaAPI.usleep(10000)
  end
  error("waited in vain: " .. what)
end

function start_engine()
  local backend = AudioEngine:set_backend("None (Dummy)", "", "")
  backend:set_device_name("Silence")
end

-- How often this line is in the simulator's report.
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

-- Releases what the script still holds of the session, and closes it.
function close()
  collectgarbage()
  collectgarbage()
  close_session()
  fact("ended when closed", reported("end 1"))
end
